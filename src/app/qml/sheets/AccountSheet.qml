import QtQuick
import Lexiquill

Sheet {
    title: "多端同步"
}
