import QtQuick
import Lexiquill

Sheet {
    title: "偏好设置"
}
