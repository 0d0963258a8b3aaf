#include "dictionaries/mdict/mdict_format.h"

#include "dictionaries/mdict/mdict_reader.h"

#include <QFileInfo>

namespace lexiquill::mdict {

namespace {

QStringList filesOf(const QString &path) {
    return {path, resourcePath(path, 0), resourcePath(path, 1), resourcePath(path, 2)};
}

DictionaryDescription describe(const QString &path) {
    ReadHeader head = MdictFile::describe(path);
    DictionaryDescription description{.about = std::move(head.header.about), .problem = head.problem};
    if (description.about.name.isEmpty())
        description.about.name = QFileInfo(path).completeBaseName();
    return description;
}

} // namespace

DictionaryFormat format() {
    return {.name = QStringLiteral("MDict"),
            .suffix = QStringLiteral(".mdx"),
            .files = filesOf,
            .describe = describe,
            .open = MdictReader::open};
}

} // namespace lexiquill::mdict
