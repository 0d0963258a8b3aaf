#include "main/loaded_online_source.h"

namespace lexiquill {

QCoro::Task<std::optional<DictionaryEntry>> LoadedOnlineSource::lookup(QString word, std::stop_token stop) {
    if (!m_module)
        m_module = loadModule<NetworkModule>();
    if (*m_module == nullptr)
        co_return std::nullopt;
    co_return co_await (*m_module)->onlineSource().lookup(word, stop);
}

} // namespace lexiquill
