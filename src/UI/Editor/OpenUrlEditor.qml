import QtQuick
import Tavrin

// Which address is opened.
Column {
    id: root

    required property EditorModel editor

    spacing: 7

    FormField {
        width: parent.width
        text: "Đường dẫn trang web (URL):"

        TextField {
            width: parent.width
            label: "Đường dẫn trang web (URL)"
            placeholder: "https://example.com, https://example.org/bang-viec..."
            text: root.editor.actionValue
            onEdited: root.editor.actionValue = text
        }
    }

    Label {
        width: parent.width
        text: "Sẽ mở bằng trình duyệt mặc định của hệ thống."
        font.pixelSize: 11
        color: Theme.secondaryText
    }
}
