#pragma once

#include "lookup/online_source.h"
#include "main/modules.h"

#include <optional>

namespace lexiquill {

/// The online source of the network library. The library is loaded at the first lookup, so that programs
/// which stay offline do not load it. If the library is missing or broken, no word is found.
class LoadedOnlineSource final : public OnlineSource {
public:
    QCoro::Task<std::optional<DictionaryEntry>> lookup(QString word, std::stop_token stop) override;

private:
    std::optional<NetworkModule *> m_module; ///< no value before the first attempt; null if it cannot be
                                             ///< loaded
};

} // namespace lexiquill
