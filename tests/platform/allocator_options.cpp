// The sanitizers' allocators end the program when a request cannot be met. The tests ask for such
// requests on purpose and expect null, as from any other allocator.

extern "C" {
const char* __asan_default_options();
const char* __tsan_default_options();
const char* __asan_default_options() {
  return "allocator_may_return_null=1";
}
const char* __tsan_default_options() {
  return "allocator_may_return_null=1";
}
}
