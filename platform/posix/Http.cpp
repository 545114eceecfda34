#include "platform/Http.h"

#include <curl/curl.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <new>

#include "platform/Text.h"

namespace tolvane::platform {
namespace {

constexpr std::string_view kHttp = "http://";
constexpr std::string_view kHttps = "https://";
constexpr long kMaxRedirections = 5;

struct Body {
  std::string bytes;
  std::size_t limit;
};

// libcurl ends the transfer when less is taken than was given.
std::size_t Receive(const char* data, std::size_t size, std::size_t count, void* target) noexcept {
  Body& body = *static_cast<Body*>(target);
  const std::size_t bytes = size * count;
  if (bytes > body.limit - body.bytes.size()) return 0;
  try {
    body.bytes.append(data, bytes);
  } catch (const std::bad_alloc&) {
    return 0;
  }
  return bytes;
}

bool IsLibraryReady() {
  static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
  return ready;
}

std::optional<std::string> Get(std::string_view url, std::chrono::milliseconds timeout, std::size_t maxBytes) {
  const bool secure = EqualIgnoringCase(url.substr(0, kHttps.size()), kHttps);
  const bool plain = EqualIgnoringCase(url.substr(0, kHttp.size()), kHttp);
  if (!secure && !plain) return std::nullopt;
  // The library would read the address up to the first zero byte, and no time as any time.
  if (url.find('\0') != std::string_view::npos || timeout.count() <= 0 || !IsLibraryReady()) return std::nullopt;

  const std::unique_ptr<CURL, void (*)(CURL*)> transfer(curl_easy_init(), curl_easy_cleanup);
  if (!transfer) return std::nullopt;
  CURL* const handle = transfer.get();
  const std::string address(url);
  const long milliseconds =
      static_cast<long>(std::min<std::chrono::milliseconds::rep>(timeout.count(), std::numeric_limits<int>::max()));
  Body body{{}, maxBytes};

  const bool prepared =
      curl_easy_setopt(handle, CURLOPT_URL, address.c_str()) == CURLE_OK &&
      curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https") == CURLE_OK &&
      curl_easy_setopt(handle, CURLOPT_REDIR_PROTOCOLS_STR, secure ? "https" : "http,https") == CURLE_OK &&
      curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L) == CURLE_OK &&
      curl_easy_setopt(handle, CURLOPT_MAXREDIRS, kMaxRedirections) == CURLE_OK &&
      curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, milliseconds) == CURLE_OK &&
      // Signals belong to the program, not to a library that may run in any of its threads.
      curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L) == CURLE_OK &&
      curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, Receive) == CURLE_OK &&
      curl_easy_setopt(handle, CURLOPT_WRITEDATA, &body) == CURLE_OK;
  if (!prepared || curl_easy_perform(handle) != CURLE_OK) return std::nullopt;

  long status = 0;
  if (curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status) != CURLE_OK) return std::nullopt;
  if (status < 200 || status > 299) return std::nullopt;
  return std::move(body.bytes);
}

}  // namespace

std::optional<std::string> HttpGet(std::string_view url, std::chrono::milliseconds timeout,
                                   std::size_t maxBytes) noexcept {
  try {
    return Get(url, timeout, maxBytes);
  } catch (...) {
    return std::nullopt;  // out of memory
  }
}

}  // namespace tolvane::platform
