pragma ComponentBehavior: Bound

import QtQuick
import Tavrin

// What kind of action a shortcut runs.
ChoiceGroup {
    id: root

    required property EditorModel editor

    implicitHeight: 58
    label: "Hành động thực thi"
    titles: editor.typeLabels
    current: editor.selectedType
    onChosen: index => editor.selectedType = index

    Row {
        id: row

        anchors.fill: parent
        spacing: 8

        Repeater {
            model: root.titles.length

            ChoiceCard {
                required property int index

                width: (row.width - row.spacing * (root.titles.length - 1)) / root.titles.length
                label: root.titles[index]
                symbol: root.editor.typeSymbols[index]
                isUpright: true
                isSelected: index === root.current
                isGroupFocused: root.activeFocus
                onClicked: root.chosen(index)
            }
        }
    }
}
