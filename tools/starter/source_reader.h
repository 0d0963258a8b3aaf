#pragma once

#include "starter/entry.h"

#include <QSet>
#include <QString>

#include <vector>

namespace lexiquill::tools {

/// Reads the source of the starter dictionary, of which CONTRIBUTING.md explains the format, and stops at the
/// first line that breaks it.
class StarterSourceReader {
public:
    /// Reads a file, in UTF-8. False when it cannot be read or is faulty; message() then says where and why.
    bool read(const QString &path);

    const QString &message() const { return m_message; }
    const std::vector<StarterEntry> &entries() const { return m_entries; }

private:
    QString readText(const QString &text);
    QString readLine(const QString &line);
    QString readHead(const QString &line);
    QString readForms(const QString &list);
    QString readPartOfSpeech(const QString &line);
    QString readSense(const QString &line);
    QString readExample(const QString &line);
    QString endEntry();

    std::vector<StarterEntry> m_entries;
    QSet<QString> m_headwords;
    QString m_message;
    qsizetype m_line = 0;
    bool m_inEntry = false;
};

} // namespace lexiquill::tools
