#include "dictionaries/english/word_lists.h"

#include <QSet>

namespace lexiquill::english {

namespace {

// Words that are just as often nouns or verbs, such as "can", "like" and "round", are not included.
constexpr QStringView functionWords =
    u"a an the this that these those i me my we us our you your he him his she her it its they them their "
    u"ours yours hers theirs who whom whose which what and or nor but if so as than then because although "
    u"though unless since until while whether for to too of off on onto in into at by from with within "
    u"without about above across after against along among around before behind below beneath beside "
    u"between beyond despite during except over per through toward towards under upon up out via versus "
    u"shall should would could may might must ought not no none some any all both each every either "
    u"neither many much more most such there here now thus also very when where how";

// Words that are related to their apparent base are not included: "building" may lead to "build".
constexpr QStringView lookInflected =
    // -s; names only capitalised, because "mars" is also a form of "mar"
    u"news lens series species physics politics does always perhaps sometimes chaos cosmos canvas atlas "
    u"bias alias alas iris pants mews mumps corps whereas Mars Paris Wales "
    // -ed
    u"wicked rugged naked sacred hundred kindred hatred moped biped coed infrared newlywed embed imbed "
    // -ing
    u"evening morning ceiling herring inning pudding shilling bunting whiting earring sterling darling "
    u"sibling starling awning fleeting during nothing something anything everything cunning viking "
    u"incoming outgoing peking "
    // -er
    u"barrier terrier harrier farrier pannier rasher";

constexpr QStringView compared =
    u"able ample apt bad bald bare big bitter black bland blank bleak blind blithe blond blonde blue blunt "
    u"bold brash brave brief bright brisk brittle broad brown brusque calm cheap chic clean clear clever "
    u"close coarse cold common cool coy crass crisp cross crude cruel curt cute daft damp dark dead deaf "
    u"dear deep deft dense dim dire drab dry dull dumb extreme faint fair fast fat feeble few fickle "
    u"fierce fine firm fit flat fleet fond foul frail frank free fresh full gaunt gay gentle glad glib "
    u"glum grand grave gray great green grey grim gross gruff handsome hard harsh high hip hoarse hollow "
    u"hot huge humble idle keen kind lame large late lax lean lewd light limp lithe little long loose loud "
    u"low lush mad mature mean meek mellow mere mild moist naive narrow near neat new nice nimble noble "
    u"obscure odd often old pale pert pink plain pleasant plump plush polite poor posh prim profound proud "
    u"pure quaint queer quick quiet rare rash raw red remote rich ripe robust rough rude sad safe sallow "
    u"sane scant scarce secure severe shallow sharp shiny short shrewd shrill shy sick simple sincere "
    u"slack sleek slender slick slight slim slow sly small smart smooth smug snide snug sober soft soon "
    u"sore sound sour spare sparse spry square stable staid stale stark staunch steep stern stiff still "
    u"stout straight strange strict strong stupid suave subtle supple sure sweet swift tall tame tart taut "
    u"tender tense terse thick thin tight tough trim true vague vain vast vile wan warm weak weird wet "
    u"white wide wild wise wry yellow young";

constexpr QStringView verbsInEe = u"agree disagree free decree guarantee referee knee pee tee emcee puree";

constexpr QStringView silentE =
    u"ache bathe breathe clothe loathe sheathe soothe teethe wreathe haste paste waste route secrete unite "
    u"range lunge tinge binge";

constexpr QStringView unusualBasesOfS = u"ad ax ox menu guru gnu emu tutu flu caribou bayou zebu impromptu";

using Words = QSet<QString>;

Words listed(QStringView list) {
    Words words;
    for (const QStringView word : list.tokenize(u' '))
        words.insert(word.toString());
    return words;
}

} // namespace

bool isFunctionWord(const QString &word) {
    static const Words words = listed(functionWords);
    return words.contains(word);
}

bool onlyLooksInflected(const QString &word) {
    static const Words words = listed(lookInflected);
    return words.contains(word);
}

bool isComparedByEnding(const QString &word) {
    static const Words words = listed(compared);
    return words.contains(word);
}

bool isVerbInEe(const QString &word) {
    static const Words words = listed(verbsInEe);
    return words.contains(word);
}

bool hasUnexpectedSilentE(const QString &verb) {
    static const Words words = listed(silentE);
    return words.contains(verb);
}

bool isUnusualBaseOfS(const QString &noun) {
    static const Words words = listed(unusualBasesOfS);
    return words.contains(noun);
}

} // namespace lexiquill::english
