// The text formatter's functions, compiled once for all who format texts: header-only, every such
// file would compile them for itself, which takes longer than the file. Debian's own compiled
// library serves neither the sanitizers nor the cross compiler.
#include <fmt/format-inl.h>

FMT_BEGIN_NAMESPACE
namespace detail {

// What the library's headers declare as compiled elsewhere, for texts of plain characters.
template FMT_API auto dragonbox::to_decimal(float) noexcept -> dragonbox::decimal_fp<float>;
template FMT_API auto dragonbox::to_decimal(double) noexcept -> dragonbox::decimal_fp<double>;
template FMT_API auto locale_ref::get<std::locale>() const -> std::locale;
template FMT_API auto thousands_sep_impl(locale_ref) -> thousands_sep_result<char>;
template FMT_API auto decimal_point_impl(locale_ref) -> char;
template FMT_API void buffer<char>::append(const char*, const char*);
template FMT_API void vformat_to(buffer<char>&, string_view,
                                 basic_format_args<FMT_BUFFER_CONTEXT(char)>, locale_ref);

}  // namespace detail
FMT_END_NAMESPACE
