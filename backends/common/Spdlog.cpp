// Compiles spdlog, and fmt unless FMT_HEADER_ONLY is defined, once for all back ends. Debian's
// libfmt.so and libspdlog.so are not linked: a back end must load on a machine without them.

#if !defined(FMT_HEADER_ONLY)
#include <fmt/format-inl.h>
#endif

#include <spdlog/common-inl.h>
#include <spdlog/details/log_msg-inl.h>
#include <spdlog/details/os-inl.h>
#include <spdlog/pattern_formatter-inl.h>
#include <spdlog/sinks/base_sink-inl.h>
#include <spdlog/sinks/sink-inl.h>

template class spdlog::sinks::base_sink<spdlog::details::null_mutex>;

#if !defined(FMT_HEADER_ONLY)
// The templates that fmt's headers only declare.
namespace fmt::detail {

template void vformat_to(buffer<char>&, string_view, basic_format_args<format_context>, locale_ref);
template thousands_sep_result<char> thousands_sep_impl(locale_ref);
template thousands_sep_result<wchar_t> thousands_sep_impl(locale_ref);
template char decimal_point_impl(locale_ref);
template wchar_t decimal_point_impl(locale_ref);
template locale_ref::locale_ref(const std::locale&);
template std::locale locale_ref::get<std::locale>() const;
template dragonbox::decimal_fp<float> dragonbox::to_decimal(float) noexcept;
template dragonbox::decimal_fp<double> dragonbox::to_decimal(double) noexcept;

} // namespace fmt::detail
#endif
