#pragma once

#include "model/dictionary_entry.h"
#include "support/cancellation.h"

#include <QCoroTask>
#include <QString>

#include <optional>

namespace lexiquill {

/// A dictionary that is asked over the network.
class OnlineSource {
public:
    virtual ~OnlineSource() = default;

    /// The entry for a word; no value when it is blank or unknown, when anything goes wrong, or when the
    /// lookup is cancelled. Needs an application object and an event loop.
    virtual QCoro::Task<std::optional<DictionaryEntry>> lookup(QString word, std::stop_token stop) = 0;
};

} // namespace lexiquill
