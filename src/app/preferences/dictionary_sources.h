#pragma once

#include "lookup/dictionary_source_mode.h"

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace lexiquill {

/// The texts of the dictionary sources, for the source pickers.
class DictionarySources : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    explicit DictionarySources(QObject *parent = nullptr) : QObject(parent) {}

    Q_INVOKABLE static QString title(lexiquill::DictionarySourceMode mode) { return lexiquill::title(mode); }
    Q_INVOKABLE static QString iconName(lexiquill::DictionarySourceMode mode) {
        return lexiquill::iconName(mode);
    }
    Q_INVOKABLE static QString descriptionText(lexiquill::DictionarySourceMode mode) {
        return lexiquill::descriptionText(mode);
    }
};

} // namespace lexiquill
