import QtQuick
import QtTest
import Lexiquill

ScreenTest {
    id: tests

    name: "Statistics"
    when: windowShown
    width: 600
    height: 400
    visible: true

    StatisticsScreen {
        id: screen

        anchors.fill: parent
        visible: true
    }
    ForecastSection {
        id: forecast

        width: parent.width
        visible: false
        days: []
        secondary: "gray"
        pageHeight: 400
    }
    WordListModel {
        id: words
    }
    WordCard {
        id: card
    }

    function test_texts_data() {
        return ["📊 艾宾浩斯记忆与复习状态分析", "总词汇量 5，搜索与收录", "已完全掌握 0，间隔 ≥ 60天", "曲线巩固中 0，进行性延期间隔",
            "今日需复习 5，待打卡", "稳固记忆保持率 (Retention Rate)", "0.0%",
            "反映进入中长期记忆（巩固阶段与完全掌握）的词汇占总收录词汇的比例。", "📅 未来 7 天复习负载预测", "今天：5 词", "明天：0 词",
            "过去一年还没有复习记录", "还没有复习过的单词", "还没有忘记过的单词"].map(text => ({tag: text}));
    }

    function test_texts(row) {
        verify(named(screen, row.tag));
    }

    function test_forecast_bars_data() {
        // The heights of the bars; where they do not fit, only the shares of the tallest one, if not empty.
        return [
            {tag: "few", page: 300, counts: [0, 1, 2, 0, 3, 0, 5], heights: [6, 14, 28, 6, 42, 6, 70]},
            {tag: "all fit", page: 600, counts: [0, 1, 24, 25, 30, 0, 32], heights: [6, 14, 336, 350, 420, 6, 448]},
            {tag: "too many", page: 400, counts: [333, 403, 0, 350, 390, 400, 341], shares: [333, 403, 0, 350, 390, 400, 341]},
            {tag: "far too many", page: 700, counts: [20000, 10000, 0, 1, 500, 0, 0], shares: [20000, 10000, 0, 0, 500, 0, 0]},
        ];
    }

    function test_forecast_bars(row) {
        forecast.visible = true;
        forecast.pageHeight = row.page;
        forecast.days = row.counts.map((count, day) => ({label: "第" + day + "天", count: count}));
        waitForRendering(forecast);
        const heights = row.counts.map((count, day) => {
            const column = named(forecast, "第" + day + "天：" + count + " 词");
            const above = find(column, item => item.text === count.toFixed(0));
            const below = find(column, item => item.text === "第" + day + "天");
            verify(above.y >= 0 && column.mapToItem(forecast, 0, above.y).y > 0);
            return below.y - above.y - above.height;
        });
        verify(forecast.height <= Math.max(row.page, 300));
        if (row.heights) {
            compare(heights, row.heights);
        } else {
            const tallest = Math.max(...heights);
            fuzzyCompare(forecast.height, row.page, 1);
            const most = Math.max(...row.counts);
            row.shares.forEach((share, day) => fuzzyCompare(heights[day], share === 0 ? 6 : tallest * share / most, 0.5));
        }
        forecast.visible = false;
    }

    function test_keys_scroll() {
        const area = find(screen, item => item.contentY !== undefined);
        area.forceActiveFocus();
        keyClick(Qt.Key_PageDown);
        verify(area.contentY > 200);
        keyClick(Qt.Key_PageUp);
        compare(area.contentY, 0);
        keyClick(Qt.Key_End);
        compare(area.contentY, area.contentHeight - area.height);
        // Also from within a chart.
        named(screen, "📅 未来 7 天复习负载预测").forceActiveFocus();
        keyClick(Qt.Key_Home);
        compare(area.contentY, 0);
    }

    function test_z_charts_tell_their_values() {
        for (const remembered of [false, true, true]) {
            words.choose(remembered ? 1 : 2, WordListModel.Replace);
            card.wordId = words.selectedId;
            card.answer(remembered);
        }
        const forgotten = card.headword;
        const charts = [
            ["未来 7 天复习负载预测", "今天：3 词", "明天：1 词"],
            ["过去一年复习日历", "2025年3月12日：复习 3 次", "2025年3月11日：没有复习"],
            ["每月复习与记住率", "2024年4月：没有复习", ""],
            ["一天中的复习时间", "0:00–1:00：复习 0 次", "1:00–2:00：复习 0 次"],
            ["遗忘曲线", "今天：保持率约 100%", "1 天后：保持率约 97%"],
        ];
        verify(named(screen, "2025年3月：复习 3 次，记住 2 次，占 67%"));
        verify(named(screen, "9:00–10:00：复习 3 次"));
        const area = find(screen, item => item.contentY !== undefined);
        for (const [name, first, second] of charts) {
            const chart = find(screen, item => item.activeFocusOnTab && item.Accessible.name.endsWith(name));
            verify(chart, name);
            verify(chart.Accessible.description !== "", name);
            chart.forceActiveFocus();
            compare(chart.Accessible.description, first);
            // The same text stands below or above the chart, on the visible page.
            const line = find(screen, item => item.text === first);
            const top = line.mapToItem(screen, 0, 0).y;
            verify(top >= 0 && top + line.height <= screen.height, first);
            keyClick(name === "过去一年复习日历" ? Qt.Key_Up : Qt.Key_Right);
            if (second !== "")
                compare(chart.Accessible.description, second);
            area.forceActiveFocus();
            verify(chart.Accessible.description !== second);
            mouseMove(chart, chart.width / 2, chart.height / 2);
            tryVerify(() => chart.markedText !== "");
            mouseMove(screen, 1, 1);
            tryCompare(chart, "markedText", "");
        }
    }

    function test_z_hardest_words_open() {
        const row = find(screen, item => item.Accessible.name.endsWith("，没记住 1 次，难度系数 2.30"));
        verify(row);
        find(screen, item => item.contentY !== undefined).reveal(row);
        waitForRendering(screen);
        mouseClick(row);
        compare(ContentView.externalSelectedWord, row.text);
    }
}
