// The process-wide instances of the network library. Each is created on first use and never destroyed.

#include "network/http_client.h"

namespace lexiquill {

HttpClient &HttpClient::shared() {
    static auto *const instance = new HttpClient;
    return *instance;
}

} // namespace lexiquill
