#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace lexiquill::tools {

struct StarterSense {
    QString grammar; ///< such as "[U]"; may be empty
    QString pattern; ///< such as "be good at sth" or "informal"; may be empty
    QString remark;  ///< in Chinese, on what the word is said of; may be empty
    QString glosses; ///< in Chinese, separated by "；"
    QStringList examples;
};

struct StarterGroup {
    QString label; ///< such as "n."
    std::vector<StarterSense> senses;
};

/// An entry of the starter dictionary's source.
struct StarterEntry {
    QString headword;
    QString phonetic; ///< "British; US American" where the two differ
    int level = 0;    ///< 1 for the commonest words to 5
    /// Irregular forms and other spellings. They lead to this entry.
    QStringList forms;
    std::vector<StarterGroup> groups;
};

} // namespace lexiquill::tools
