#include "desktop_search/spotlight_manager.h"

namespace lexiquill {

const QStringList &SpotlightManager::commonHighFrequencyWords() {
    static const QStringList words =
        QStringLiteral(
            "abandon abstract accurate achieve acquire adapt adequate alter ambiguous analyze anticipate "
            "apparent appreciate arbitrary aspect assess assign assume attitude attribute available benefit "
            "capable category cease clarify collapse colleague commence compatible compensate compile "
            "complex "
            "component comprehensive comprise conceive concentrate concept conclude concurrent conduct "
            "confine confirm conform consent consequent considerable consist constant constitute constrain "
            "construct consult consume contact contemporary context contract contradict contrast contribute "
            "controversy convene converse convert convince core correspond crucial currency cycle data "
            "debate "
            "decade decline deduce define definite demonstrate denote deny depress derive design despite "
            "detect deviate device devote differentiate dimension diminish discrete discriminate displace "
            "display dispose distinct distort distribute diverse document domain domestic dominate draft "
            "drama duration dynamic economy element eliminate emerge emphasis empirical enable encounter "
            "energy enforce enhance enormous ensure entity environment equate equip equivalent erode error "
            "establish estate estimate ethical ethnic evaluate eventual evident evolve exceed exclude "
            "exhibit "
            "expand expert explicit exploit export expose external extract facilitate factor feature federal "
            "fee file final finance finite flexible fluctuate focus format formula forthcoming foundation "
            "framework function fund fundamental furthermore gender generate generation globe goal grade "
            "grant guarantee guideline hence hierarchy highlight hypothesis identical identify ideology "
            "ignorant illustrate image immigrate impact implement implicate implicit imply impose incentive "
            "incidence incline income incorporate index indicate individual induce inevitable infer "
            "infrastructure inherent inhibit initial initiate injure innovate input insert insight inspect "
            "instance institute instruct integral integrate integrity intelligence intense interact "
            "intermediate internal interpret interval intervene intrinsic invest investigate invoke involve "
            "isolate issue item job journal justify label labor layer lecture legal legislate levy liberal "
            "license likewise link locate logic maintain major manipulate manual margin mature maximize "
            "mechanism media mediate medical medium mental method migrate military minimal minimize minimum "
            "ministry minor mode modify monitor motive mutual negate network neutral nevertheless "
            "nonetheless "
            "norm normal notion notwithstanding nuclear objective obtain obvious occupy occur odd offset "
            "ongoing option orient outcome output overall overlap overseas panel paradigm paragraph parallel "
            "parameter participate partner passive perceive percent period persist perspective phase "
            "phenomenon philosophy physical plus policy portion pose positive potential practitioner precede "
            "precise predict predominant preliminary presume previous primary prime principal principle "
            "prior "
            "priority proceed process professional prohibit project promote proportion prospect protocol "
            "psychology publication publish purchase pursue qualitative quote radical random range ratio "
            "rational react recover refine regime region register regulate reinforce reject relax release "
            "relevant reluctance rely remove require research reside resolve resource respond restore "
            "restrain restrict retain reveal revenue reverse revise revolution rigid role route scenario "
            "schedule scheme scope section sector secure seek select sequence series shift significant "
            "similar simulate site sole somewhat source specific specify sphere stable statistic status "
            "straightforward strategy stress structure style submit subordinate subsequent subsidy "
            "substitute "
            "successor sufficient sum summary supplement survey survive suspend sustain symbol target task "
            "team technical technique technology temporary tense terminate text theme theory thereby thesis "
            "topic trace tradition transfer transform transit transmit transport trend trigger ultimate "
            "undergo underlie undertake uniform unify unique utilize valid vary vehicle version via violate "
            "virtual visible vision visual volume voluntary welfare whereas whereby widespread")
            .split(u' ');
    return words;
}

} // namespace lexiquill
