#pragma once

#include "lookup/online_source.h"

namespace lexiquill {

/// The online source of the network library, which is loaded when the first word is asked for: programs that
/// stay offline do not pay for it. A library that is missing or broken counts as a source that knows nothing.
class LoadedOnlineSource final : public OnlineSource {
public:
    /// `library`: path of the library file. It exports `lexiquillOnlineSource`.
    explicit LoadedOnlineSource(const QString &library) : m_library(library) {}

    QCoro::Task<std::optional<DictionaryEntry>> lookup(QString word, CancellationToken cancellation) override;

private:
    void load();

    QString m_library;
    bool m_isTried = false;
    OnlineSource *m_source = nullptr;
};

} // namespace lexiquill
