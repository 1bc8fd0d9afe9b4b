// Owns the precompiled headers that every test program reuses.
int main() {}
