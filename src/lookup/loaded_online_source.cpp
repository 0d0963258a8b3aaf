#include "lookup/loaded_online_source.h"

#include <QLibrary>

namespace lexiquill {

void LoadedOnlineSource::load() {
    using Factory = OnlineSource *(*)();
    m_isTried = true;
    const auto factory = reinterpret_cast<Factory>(QLibrary::resolve(m_library, "lexiquillOnlineSource"));
    m_source = factory != nullptr ? factory() : nullptr;
}

QCoro::Task<std::optional<DictionaryEntry>> LoadedOnlineSource::lookup(QString word,
                                                                       CancellationToken cancellation) {
    if (!m_isTried)
        load();
    if (m_source == nullptr)
        co_return std::nullopt;
    co_return co_await m_source->lookup(word, cancellation);
}

} // namespace lexiquill
