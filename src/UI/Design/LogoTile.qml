import QtQuick
import Tavrin

// The product's sign: a symbol on a square tile.
Rectangle {
    id: root

    required property string symbol

    implicitWidth: 40
    height: width
    radius: width * 0.225
    color: Theme.accent

    Symbol {
        anchors.centerIn: parent
        name: root.symbol
        size: Math.round(root.width * 0.55)
        color: Theme.onAccent
    }
}
