pragma ComponentBehavior: Bound

import QtQuick
import Tavrin

// Which of the desktop's own actions is done.
FormField {
    id: root

    required property EditorModel editor

    text: "Chọn hành động hệ thống:"
    spacing: 9

    ChoiceGroup {
        id: group

        width: parent.width
        height: column.height
        label: "Hành động hệ thống"
        titles: root.editor.systemActionTitles
        current: root.editor.selectedSystemAction
        onChosen: index => root.editor.selectedSystemAction = index

        Column {
            id: column

            width: parent.width
            spacing: 12

            Repeater {
                model: root.editor.systemActionGroups

                Column {
                    id: section

                    required property int index
                    required property string modelData

                    width: column.width
                    spacing: 6

                    SectionTitle {
                        text: section.modelData
                        font.pixelSize: 12
                    }

                    Grid {
                        id: grid

                        columns: 2
                        spacing: 8

                        Repeater {
                            model: root.editor.systemActionCount(section.index)

                            ChoiceCard {
                                required property int index
                                readonly property int action: root.editor.firstSystemAction(section.index) + index

                                width: (section.width - grid.spacing) / 2
                                label: root.editor.systemActionTitles[action]
                                symbol: root.editor.systemActionSymbols[action]
                                isSelected: action === root.editor.selectedSystemAction
                                isGroupFocused: group.activeFocus
                                onClicked: group.chosen(action)
                            }
                        }
                    }
                }
            }
        }
    }
}
