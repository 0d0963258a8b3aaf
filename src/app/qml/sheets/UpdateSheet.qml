import QtQuick
import Lexiquill

Sheet {
    title: "软件更新"
}
