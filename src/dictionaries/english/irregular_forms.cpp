#include "dictionaries/english/irregular_forms.h"

#include <QHash>
#include <QSet>

#include <utility>

namespace lexiquill::english {

namespace {

// Families are separated by ";". A family is the base, its irregular forms, and after ":" the prefixes of
// words with the same inflection. "+" marks verbs that also have a regular past. A verb without forms is its
// own past.
constexpr QStringView verbs =
    u"be am is are was were been being; have has had; do does did done doing: un re over out;"
    u"go goes went gone going: under for fore; can+ could; may might; shall should; will+ would;"
    u"say said: un gain; make made: re un; take took taken: under over mis re par be; come came: be over;"
    u"see saw seen: fore over sight; know knew known; get got gotten: be for; give gave given: for mis;"
    u"find found; think thought: re out; tell told: re fore; leave left; feel felt; bring brought;"
    u"begin began begun; keep kept; hold held: be with up;"
    u"write wrote written: re under over type hand ghost; stand stood: under misunder with;"
    u"hear heard: over mis; mean meant; meet met; run ran: over out re; pay paid: re over under pre;"
    u"sit sat: baby; speak spoke spoken: be mis; lie+ lay lain; underlie underlay underlain;"
    u"lay laid: mis way in over un; lead led: mis; grow grew grown: out over in; lose lost;"
    u"fall fell fallen: be; send sent; build built: re over; draw drew drawn: with over re;"
    u"break broke broken; spend spent: over mis out under; rise rose risen: a; drive drove driven;"
    u"buy bought; wear wore worn; choose chose chosen; eat ate eaten: over; win won;"
    u"throw threw thrown: over; catch caught; teach taught; fight fought; seek sought;"
    u"sell sold: re out over under; fly flew flown: over; sing sang sung; ring+ rang rung; swim swam swum;"
    u"drink drank drunk drunken; sink sank sunk sunken; shrink shrank shrunk shrunken;"
    u"spring sprang sprung; stink stank stunk; slink slunk; sleep slept: over; sweep swept; weep wept;"
    u"creep crept; leap+ leapt; lean+ leant; dream+ dreamt: day; deal dealt: mis; kneel+ knelt;"
    u"burn+ burnt: sun; learn+ learnt; smell+ smelt; spell+ spelt: mis; spill+ spilt: over; spoil+ spoilt;"
    u"dwell+ dwelt; bend bent: un; lend lent; feed fed: over under breast; breed bred: cross inter;"
    u"bleed bled; speed+ sped; flee fled; slide slid: back; hide hid hidden; bite bit bitten;"
    u"light+ lit: re; shoot shot: over out; shine+ shone: out; strike struck stricken; stick stuck: un;"
    u"dig dug; hang+ hung: over; swing swung; cling clung; fling flung; sling slung; sting stung;"
    u"string+ strung: ham un; wring wrung; spin spun; slay slew slain; bind bound: un spell;"
    u"wind+ wound: un re; grind ground; blow blew blown; shake shook shaken; forsake forsook forsaken;"
    u"wake+ woke woken; awake+ awoke awoken; freeze froze frozen: un re; steal stole stolen;"
    u"weave+ wove woven: inter; tear tore torn; swear swore sworn: for; bear bore borne born: for over;"
    u"ride rode ridden: over; stride strode stridden: be; beat beaten: brow; bid bade bidden: for;"
    u"smite smote smitten; tread trod trodden; strive+ strove striven; dive+ dove; sneak+ snuck;"
    u"plead+ pled; spit+ spat; show+ shown; sew+ sewn; sow+ sown; mow+ mown; saw+ sawn; strew+ strewn;"
    u"hew+ hewn; shear+ shorn; swell+ swollen; prove+ proven: dis; shave+ shaven; melt+ molten;"
    u"cleave+ cleft cloven; clothe+ clad; lade+ laden; gild+ gilt; gird+ girt; shoe+ shod; work+ wrought;"
    u"bereave+ bereft; beseech+ besought; ski+ skied; taxi+ taxied taxies taxying; put; cut; hit; let;"
    u"set: re up be; shut; hurt; cost; cast; burst; spread; thrust; split; slit; shed; read: re mis";

constexpr QStringView nouns =
    u"child children; man men; woman women; person people; foot feet; tooth teeth; goose geese;"
    u"mouse mice; louse lice; ox oxen; die dice; penny pence; brother brethren; money monies;"
    u"passerby passersby; leaf leaves; wife wives; life lives; knife knives; wolf wolves; half halves;"
    u"calf calves; self selves; shelf shelves; loaf loaves; thief thieves; elf elves; scarf scarves;"
    u"hoof hooves; wharf wharves; dwarf dwarves; sheaf sheaves; staff staves; turf turves;"
    u"handkerchief handkerchieves; analysis analyses; axis axes; axe axes; base bases; basis bases;"
    u"crisis crises; thesis theses; oasis oases; hypothesis hypotheses; antithesis antitheses;"
    u"parenthesis parentheses; synthesis syntheses; diagnosis diagnoses; prognosis prognoses;"
    u"emphasis emphases; ellipsis ellipses; synopsis synopses; neurosis neuroses; psychosis psychoses;"
    u"metamorphosis metamorphoses; paralysis paralyses; catharsis catharses; nemesis nemeses;"
    u"prosthesis prostheses; testis testes; phenomenon phenomena; criterion criteria; automaton automata;"
    u"ganglion ganglia; polyhedron polyhedra; datum data; medium media; bacterium bacteria;"
    u"curriculum curricula; memorandum memoranda; stratum strata; spectrum spectra; symposium symposia;"
    u"addendum addenda; erratum errata; referendum referenda; ovum ova; aquarium aquaria; stadium stadia;"
    u"millennium millennia; maximum maxima; minimum minima; optimum optima; quantum quanta; podium podia;"
    u"compendium compendia; cranium crania; equilibrium equilibria; dictum dicta; gymnasium gymnasia;"
    u"auditorium auditoria; consortium consortia; planetarium planetaria; serum sera;"
    u"moratorium moratoria; candelabrum candelabra; genus genera; corpus corpora; schema schemata;"
    u"stigma stigmata; stoma stomata; stimulus stimuli; fungus fungi; nucleus nuclei; cactus cacti;"
    u"radius radii; alumnus alumni; focus foci; syllabus syllabi; locus loci; bacillus bacilli;"
    u"terminus termini; hippopotamus hippopotami; octopus octopi; thesaurus thesauri; calculus calculi;"
    u"modulus moduli; abacus abaci; papyrus papyri; cumulus cumuli; index indices; appendix appendices;"
    u"matrix matrices; vertex vertices; vortex vortices; apex apices; codex codices; cortex cortices;"
    u"helix helices; larva larvae; formula formulae; antenna antennae; alga algae; vertebra vertebrae;"
    u"nebula nebulae; nova novae: super; alumna alumnae; pupa pupae; amoeba amoebae; lacuna lacunae;"
    u"bureau bureaux; plateau plateaux; tableau tableaux; chateau chateaux; château châteaux; beau beaux;"
    u"milieu milieux; adieu adieux; gateau gateaux; gâteau gâteaux; trousseau trousseaux;"
    u"graffito graffiti; virtuoso virtuosi; libretto libretti; paparazzo paparazzi; concerto concerti;"
    u"cherub cherubim; seraph seraphim; kibbutz kibbutzim";

constexpr QStringView comparisons =
    u"good better best; well better best; bad worse worst; badly worse worst; ill worse worst;"
    u"little less least lesser; many more most; much more most; far farther farthest further furthest;"
    u"old elder eldest; late latter";

// Nouns with these endings are inflected in the same way: "postmen". The longer of two endings comes first.
constexpr QStringView endingsOfCompounds[] = {
    u"women",  u"men",    u"children", u"people", u"feet",    u"teeth",   u"mice",
    u"lice",   u"wives",  u"lives",    u"knives", u"halves",  u"shelves", u"selves",
    u"leaves", u"loaves", u"wolves",   u"calves", u"thieves",
};

struct Table {
    QHash<QString, QList<BaseForm>> bases;
    QSet<QString> onlyIrregular;
};

void readFamily(Table &table, QStringView family, WordClasses classes) {
    QStringList prefixes{QString()};
    if (const qsizetype colon = family.indexOf(u':'); colon >= 0) {
        for (const QStringView prefix : family.sliced(colon + 1).trimmed().tokenize(u' '))
            prefixes.append(prefix.toString());
        family.truncate(colon);
    }
    QString base;
    bool alsoRegular = false;
    for (const QStringView word : family.trimmed().tokenize(u' ')) {
        if (base.isEmpty()) {
            alsoRegular = word.endsWith(u'+');
            base = word.chopped(alsoRegular ? 1 : 0).toString();
            continue;
        }
        for (const QString &prefix : std::as_const(prefixes))
            table.bases[prefix + word.toString()].append({prefix + base, classes});
    }
    for (const QString &prefix : std::as_const(prefixes)) {
        if (!alsoRegular)
            table.onlyIrregular.insert(prefix + base);
    }
}

const Table &table() {
    static const Table read = [] {
        Table result;
        for (const QStringView family : comparisons.tokenize(u';'))
            readFamily(result, family, WordClass::Adjective | WordClass::Adverb);
        for (const QStringView family : nouns.tokenize(u';'))
            readFamily(result, family, WordClass::Noun);
        result.onlyIrregular.clear();
        for (const QStringView family : verbs.tokenize(u';'))
            readFamily(result, family, WordClass::Verb);
        return result;
    }();
    return read;
}

} // namespace

QList<BaseForm> irregularBases(const QString &form) {
    QList<BaseForm> bases = table().bases.value(form);
    if (!bases.isEmpty())
        return bases;
    for (const QStringView ending : endingsOfCompounds) {
        constexpr qsizetype shortestFirstPart = 3;
        if (form.size() < ending.size() + shortestFirstPart || !form.endsWith(ending))
            continue;
        for (const BaseForm &base : table().bases.value(ending.toString()))
            bases.append({form.chopped(ending.size()) + base.word, base.classes});
        break;
    }
    return bases;
}

bool hasOnlyIrregularPast(const QString &verb) {
    return table().onlyIrregular.contains(verb);
}

} // namespace lexiquill::english
