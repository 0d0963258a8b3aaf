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
    }

    function test_texts_data() {
        return ["📊 艾宾浩斯记忆与复习状态分析", "总词汇量 5，搜索与收录", "已完全掌握 0，间隔 ≥ 60天", "曲线巩固中 0，进行性延期间隔",
            "今日需复习 5，待打卡", "稳固记忆保持率 (Retention Rate)", "0.0%",
            "反映进入中长期记忆（巩固阶段与完全掌握）的词汇占总收录词汇的比例。", "📅 未来 7 天复习负载预测", "今天：5 词", "明天：0 词",
            "过去一年还没有复习记录", "还没有复习过的单词"].map(text => ({tag: text}));
    }

    function test_texts(row) {
        verify(named(screen, row.tag));
    }
}
