#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::platform {

// The body behind an http:// or https:// address. Empty on any failure: another scheme, no answer with a 2xx status
// within `timeout` (all redirections included), a body of more than `maxBytes`. A redirection may lead from http to
// https but not back, and to no other scheme.
std::optional<std::string> HttpGet(std::string_view url, std::chrono::milliseconds timeout,
                                   std::size_t maxBytes) noexcept;

}  // namespace tolvane::platform
