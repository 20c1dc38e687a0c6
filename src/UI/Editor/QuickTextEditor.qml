pragma ComponentBehavior: Bound

import QtQuick
import Tavrin

// Which text is put where the user types, and how.
Column {
    id: root

    required property EditorModel editor

    spacing: 12

    Picker {
        width: parent.width
        label: "Mẫu văn bản có sẵn"
        caption: "Mẫu văn bản có sẵn..."
        titles: root.editor.quickTextPresetNames
        descriptions: root.editor.quickTextPresetDetails
        onChosen: index => root.editor.applyQuickTextPreset(index)
    }

    FormField {
        width: parent.width
        text: "Nội dung văn bản cần chèn / chép:"

        TextArea {
            width: parent.width
            label: "Nội dung văn bản cần chèn / chép"
            source: root.editor.quickText
            onEdited: root.editor.quickText = text
        }
    }

    Flow {
        width: parent.width
        spacing: 6

        Label {
            height: 24
            verticalAlignment: Text.AlignVCenter
            text: "Chèn biến:"
            font.pixelSize: 12
            color: Theme.secondaryText
        }

        Repeater {
            model: root.editor.tokenTitles

            TextButton {
                required property int index
                required property string modelData

                text: modelData
                ground: Theme.badge
                onClicked: root.editor.appendToken(index)
            }
        }
    }

    FormField {
        width: parent.width
        text: "Chế độ thực thi:"

        Picker {
            width: parent.width
            label: "Chế độ thực thi"
            titles: root.editor.modeTitles
            current: root.editor.selectedMode
            onChosen: index => root.editor.selectedMode = index
        }
    }

    SwitchRow {
        width: parent.width
        visible: root.editor.pastes
        text: "Khôi phục lại nội dung Clipboard trước đó sau khi dán"
        isOn: root.editor.restoreClipboard
        onFlipped: isOn => root.editor.restoreClipboard = isOn
    }

    PermissionWarning {
        width: parent.width
        visible: root.editor.isPermissionMissing
        onRequested: root.editor.requestAccessibility()
    }
}
