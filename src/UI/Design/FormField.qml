import QtQuick
import Tavrin

// What a control is for, above it.
Column {
    id: root

    required property string text
    default property alias control: place.data

    spacing: 5

    Label {
        width: parent.width
        text: root.text
        font.pixelSize: 12
        color: Theme.secondaryText
    }

    Item {
        id: place

        width: parent.width
        height: childrenRect.height
    }
}
