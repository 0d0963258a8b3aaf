#pragma once

#include "lookup/online_source.h"
#include "main/modules.h"

#include <optional>

namespace lexiquill {

/// The online source of the network library, which is loaded when the first word is asked for: programs that
/// stay offline do not pay for it. A library that is missing or broken counts as a source that knows nothing.
class LoadedOnlineSource final : public OnlineSource {
public:
    QCoro::Task<std::optional<DictionaryEntry>> lookup(QString word, std::stop_token stop) override;

private:
    std::optional<NetworkModule *> m_module; ///< absent until it has been tried; null when it is missing
};

} // namespace lexiquill
