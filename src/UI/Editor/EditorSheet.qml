pragma ComponentBehavior: Bound

import QtQuick
import Tavrin

// Makes a new shortcut or changes one.
Sheet {
    id: root

    required property ContentModel content

    readonly property EditorModel editor: content.editor

    label: editor.title
    sheetWidth: 600
    sheetHeight: 680

    onDismissed: editor.escape()

    // Return is the save button's key, wherever a control has no use of its own for it.
    Keys.onReturnPressed: event => returnPressed(event)
    Keys.onEnterPressed: event => returnPressed(event)

    function returnPressed(event: KeyEvent): void {
        // A key that is still held from opening the sheet is not meant.
        if (!event.isAutoRepeat && !editor.isPicking)
            editor.save();
    }

    FocusScope {
        anchors.fill: parent
        focus: true
        enabled: !root.editor.isPicking

        SheetHeader {
            id: header

            anchors.left: parent.left
            anchors.right: parent.right
            title: root.editor.title
            subtitle: "Gán tổ hợp phím để kích hoạt tác vụ mong muốn"
        }

        FormScroll {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: header.bottom
            anchors.bottom: footer.top

            SectionTitle {
                text: "1. Phím tắt & Tên gọi"
            }

            FormField {
                width: parent.width
                text: "Tên gợi nhớ:"

                TextField {
                    width: parent.width
                    focus: true
                    label: "Tên gợi nhớ"
                    placeholder: "Vd: Mở Telegram, Khóa màn hình, Xem IP..."
                    text: root.editor.name
                    onEdited: root.editor.name = text
                }
            }

            FormField {
                width: parent.width
                text: "Tổ hợp phím tắt:"

                KeyRecorderView {
                    width: parent.width
                    recorder: root.editor.recorder
                }
            }

            Label {
                width: parent.width
                visible: text !== ""
                text: root.editor.keyNotice
                wrapMode: Text.Wrap
                font.pixelSize: 12
                color: root.editor.isKeyTaken ? Theme.orange : Theme.secondaryText
            }

            SectionTitle {
                topPadding: 6
                text: "2. Hành động thực thi"
            }

            ActionTypePicker {
                width: parent.width
                editor: root.editor
            }

            Lazy {
                width: parent.width
                visible: active
                active: root.editor.selectedType === 0

                LaunchAppEditor {
                    editor: root.editor
                }
            }

            Lazy {
                width: parent.width
                visible: active
                active: root.editor.selectedType === 1

                OpenUrlEditor {
                    editor: root.editor
                }
            }

            Lazy {
                width: parent.width
                visible: active
                active: root.editor.selectedType === 2

                QuickTextEditor {
                    editor: root.editor
                }
            }

            Lazy {
                width: parent.width
                visible: active
                active: root.editor.selectedType === 3

                ShellScriptEditor {
                    editor: root.editor
                }
            }

            Lazy {
                width: parent.width
                visible: active
                active: root.editor.selectedType === 4

                SystemActionEditor {
                    editor: root.editor
                }
            }
        }

        EditorFooter {
            id: footer

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            editor: root.editor
        }
    }

    Lazy {
        parent: root
        anchors.fill: parent
        active: root.editor.isPicking

        AppPickerSheet {
            picker: root.editor.picker
            onClosed: root.editor.closePicker()
        }
    }
}
