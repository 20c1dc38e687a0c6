import QtQuick
import Tavrin

// Which script is run.
Column {
    id: root

    required property EditorModel editor

    spacing: 12

    Picker {
        width: parent.width
        label: "Mẫu script có sẵn"
        caption: "Mẫu script có sẵn..."
        titles: root.editor.scriptPresetNames
        descriptions: root.editor.scriptPresetDetails
        symbols: root.editor.scriptPresetSymbols
        onChosen: index => root.editor.applyScriptPreset(index)
    }

    FormField {
        width: parent.width
        text: "Lệnh Shell Script (zsh):"

        TextArea {
            width: parent.width
            implicitHeight: 150
            label: "Lệnh Shell Script (zsh)"
            font.family: "monospace"
            font.pixelSize: 12
            source: root.editor.actionValue
            onEdited: root.editor.actionValue = text
        }
    }
}
