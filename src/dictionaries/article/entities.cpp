#include "dictionaries/article/entities.h"

#include <QHash>

#include <algorithm>

namespace lexiquill::article {

namespace {

// Names of the characters U+00A0 to U+00FF in order.
constexpr const char *latin1Names[] = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",
    "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",   "sup3",
    "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",  "frac14", "frac12",
    "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde", "Auml",   "Aring",  "AElig",  "Ccedil",
    "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave", "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde",
    "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",   "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",
    "Uuml",   "Yacute", "THORN",  "szlig",  "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",
    "aelig",  "ccedil", "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",
    "eth",    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave",
    "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml",
};

struct Named {
    const char *name;
    char16_t character;
};

constexpr Named otherNames[] = {
    {"lt", u'<'},          {"gt", u'>'},     {"amp", u'&'},    {"quot", u'"'},      {"apos", u'\''},
    {"ndash", u'–'},       {"mdash", u'—'},  {"hellip", u'…'}, {"lsquo", u'‘'},     {"rsquo", u'’'},
    {"ldquo", u'“'},       {"rdquo", u'”'},  {"sbquo", u'‚'},  {"bdquo", u'„'},     {"bull", u'•'},
    {"lsaquo", u'‹'},      {"rsaquo", u'›'}, {"dagger", u'†'}, {"trade", u'™'},     {"euro", u'€'},
    {"larr", u'←'},        {"rarr", u'→'},   {"harr", u'↔'},   {"ne", u'≠'},        {"le", u'≤'},
    {"ge", u'≥'},          {"asymp", u'≈'},  {"infin", u'∞'},  {"minus", u'−'},     {"oelig", u'œ'},
    {"OElig", u'Œ'},       {"scaron", u'š'}, {"Scaron", u'Š'}, {"ensp", u'\u2002'}, {"emsp", u'\u2003'},
    {"thinsp", u'\u2009'}, {"alpha", u'α'},  {"beta", u'β'},   {"gamma", u'γ'},     {"delta", u'δ'},
    {"theta", u'θ'},       {"lambda", u'λ'}, {"mu", u'μ'},     {"pi", u'π'},        {"sigma", u'σ'},
    {"omega", u'ω'},       {"Omega", u'Ω'},  {"prime", u'′'},  {"Prime", u'″'},     {"diams", u'♦'},
};

const QHash<QString, QChar> &namedCharacters() {
    static const QHash<QString, QChar> table = [] {
        QHash<QString, QChar> names;
        char16_t code = 0xa0;
        for (const char *name : latin1Names)
            names.insert(QString::fromLatin1(name), QChar(code++));
        for (const Named &named : otherNames)
            names.insert(QString::fromLatin1(named.name), QChar(named.character));
        return names;
    }();
    return table;
}

QString characterFor(QStringView digits, int base) {
    bool ok = false;
    const uint code = digits.toUInt(&ok, base);
    const bool isCharacter =
        ok && code != 0 && code <= QChar::LastValidCodePoint && !QChar::isSurrogate(code);
    const auto character = static_cast<char32_t>(isCharacter ? code : uint(QChar::ReplacementCharacter));
    return QString::fromUcs4(&character, 1);
}

} // namespace

Entity readEntity(QStringView text) {
    constexpr qsizetype longest = 34;
    const qsizetype end = text.first(std::min(longest, text.size())).indexOf(u';');
    if (!text.startsWith(u'&') || end < 2)
        return {};
    const QStringView name = text.sliced(1, end - 1);
    if (name.startsWith(u'#')) {
        const bool hex = name.size() > 1 && (name[1] == u'x' || name[1] == u'X');
        const QStringView digits = name.sliced(hex ? 2 : 1);
        const bool plain = !digits.isEmpty() && std::all_of(digits.begin(), digits.end(), [](QChar c) {
            return c.unicode() < 0x80 && c.isLetterOrNumber();
        });
        return plain ? Entity{characterFor(digits, hex ? 16 : 10), end + 1} : Entity{};
    }
    const auto found = namedCharacters().constFind(name.toString());
    return found == namedCharacters().constEnd() ? Entity{} : Entity{QString(*found), end + 1};
}

} // namespace lexiquill::article
