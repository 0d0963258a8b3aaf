pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The program's version and licence, the libraries that it uses, and where its data is.
Sheet {
    id: sheet

    title: "关于 Lexiquill"
    width: Math.min(Theme.px(520), parent ? parent.width - 4 * Theme.unit : Theme.px(520))

    Toast {
        id: messages

        parent: sheet.contentItem
    }
    Column {
        width: parent?.width ?? 0
        spacing: 2.5 * Theme.unit

        Row {
            width: parent.width
            spacing: 2 * Theme.unit

            Image {
                id: icon

                width: Theme.px(72)
                height: Theme.px(72)
                sourceSize.width: width
                sourceSize.height: height
                source: "qrc:/lexiquill/com.lexiquill.Lexiquill.svg"
                Accessible.ignored: true
            }
            Column {
                anchors.verticalCenter: icon.verticalCenter
                width: parent.width - icon.width - parent.spacing
                spacing: Theme.px(6)

                ThemedText {
                    role: ThemedText.Heading
                    text: "Lexiquill"
                }
                ThemedText {
                    width: parent.width
                    text: "版本 " + UpdateManager.currentVersion + " (" + UpdateManager.currentBuild + ")"
                    elide: Text.ElideRight
                }
                ThemedText {
                    width: parent.width
                    role: ThemedText.Caption
                    text: "极简英汉词典与背词工具"
                    wrapMode: Text.Wrap
                }
            }
        }
        PreferenceSection {
            width: parent.width
            title: "许可证"
            note: "可以自由使用、修改和分发，请保留版权声明与许可证全文；不提供任何担保。"

            LicenceRow {
                width: parent?.width ?? 0
                name: "Lexiquill"
                purpose: "© 2026 The Lexiquill developers"
                licence: "MIT"
            }
        }
        PreferenceSection {
            width: parent.width
            title: "使用的组件"
            spacingOfRows: 0

            Repeater {
                model: [
                    {
                        name: "Qt 6",
                        purpose: "界面与基础",
                        licence: "LGPL-3.0 或 GPL-2.0 以上"
                    },
                    {
                        name: "QCoro",
                        purpose: "协程",
                        licence: "MIT"
                    },
                    {
                        name: "simdjson",
                        purpose: "JSON",
                        licence: "Apache-2.0 或 MIT"
                    },
                    {
                        name: "Gumbo",
                        purpose: "HTML",
                        licence: "Apache-2.0"
                    },
                    {
                        name: "ICU",
                        purpose: "文字",
                        licence: "Unicode / ICU"
                    },
                    {
                        name: "SQLite",
                        purpose: "系统搜索的索引",
                        licence: "公有领域"
                    },
                    {
                        name: "zlib",
                        purpose: "压缩",
                        licence: "Zlib"
                    },
                    {
                        name: "libarchive",
                        purpose: "压缩包",
                        licence: "BSD-2-Clause"
                    },
                    {
                        name: "Crypto++",
                        purpose: "校验",
                        licence: "BSL-1.0"
                    },
                    {
                        name: "FFmpeg libavutil",
                        purpose: "LZO",
                        licence: "LGPL-2.1 以上"
                    },
                    {
                        name: "XCB、xkbcommon",
                        purpose: "快捷键",
                        licence: "MIT / X11"
                    }
                ]

                LicenceRow {
                    required property var modelData

                    width: parent?.width ?? 0
                    name: modelData.name
                    purpose: modelData.purpose
                    licence: modelData.licence
                }
            }
        }
        DataPlaceList {
            width: parent.width
            toast: messages
        }
    }
}
