#include "app/dictionaries/dictionary_texts.h"

#include <QDir>

namespace lexiquill {

QString displayText(DictionaryProblem problem) {
    switch (problem) {
    case DictionaryProblem::None:
        return {};
    case DictionaryProblem::Unreadable:
        return QStringLiteral("缺少文件，或文件无法读取");
    case DictionaryProblem::UnknownFormat:
        return QStringLiteral("不是能识别的词典格式");
    case DictionaryProblem::NewerFormat:
        return QStringLiteral("词典格式的版本太新");
    case DictionaryProblem::Encrypted:
        return QStringLiteral("词典已加密，需要制作者的密钥");
    case DictionaryProblem::Damaged:
        return QStringLiteral("词典文件已损坏");
    case DictionaryProblem::TooLarge:
        return QStringLiteral("词典太大");
    case DictionaryProblem::NoUnpacker:
        return QStringLiteral("词典的压缩方式需要系统中缺少的组件");
    }
    return QStringLiteral("词典无法使用");
}

QString displayText(const ImportResult &result) {
    switch (result.problem) {
    case ImportProblem::None:
        return QStringLiteral("已添加");
    case ImportProblem::NoDictionary:
        return QStringLiteral("其中没有能识别的词典");
    case ImportProblem::AlreadyThere:
        return QStringLiteral("已经添加过");
    case ImportProblem::Broken:
        return displayText(result.dictionaryProblem);
    case ImportProblem::TooLarge:
        return QStringLiteral("文件太大或太多");
    case ImportProblem::UnsafeNames:
        return QStringLiteral("压缩包中有不安全的文件名");
    case ImportProblem::ForbiddenKind:
        return QStringLiteral("压缩包中有链接或特殊文件");
    case ImportProblem::Encrypted:
        return QStringLiteral("压缩包有密码");
    case ImportProblem::Damaged:
        return QStringLiteral("压缩包已损坏，或格式无法识别");
    case ImportProblem::NoSpace:
        return QStringLiteral("磁盘空间不足");
    case ImportProblem::NoPermission:
        return QStringLiteral("词典目录无法写入");
    case ImportProblem::Unreadable:
        return QStringLiteral("文件不存在，或无法读取");
    case ImportProblem::Cancelled:
        return QStringLiteral("已取消");
    case ImportProblem::NoLibrary:
        return QStringLiteral("此版本缺少添加词典的组件");
    }
    return QStringLiteral("无法添加");
}

QString shownName(const QString &name) {
    constexpr qsizetype longest = 80;
    constexpr qsizetype half = longest / 2;
    QString shown = name;
    for (QChar &character : shown) {
        const QChar::Category category = character.category();
        if (category == QChar::Other_Control || category == QChar::Other_Format ||
            category == QChar::Separator_Line || category == QChar::Separator_Paragraph)
            character = u' ';
    }
    shown = shown.simplified();
    return shown.size() > longest ? shown.left(half) + u'…' + shown.right(half) : shown;
}

QString shownPath(const QString &path) {
    const QString home = QDir::homePath();
    return shownName(path.startsWith(home + u'/') ? u'~' + path.mid(home.size()) : path);
}

} // namespace lexiquill
