import QtQuick
import Tavrin

// Running text over as many lines as it needs, broken such that no word or two are left alone on the last.
Item {
    id: root

    required property string text
    property alias color: label.color
    property alias font: label.font
    property bool isCentered: false

    // What a last line fills at least, and how far the lines are drawn in to have it so: shares of the width.
    readonly property real leastShare: 0.25
    readonly property real drawnInShare: 0.85
    readonly property real lastShare: label.implicitWidth / Math.max(1, width) % 1

    implicitHeight: label.height

    Label {
        id: label

        x: root.isCentered ? (root.width - width) / 2 : 0
        width: implicitWidth > root.width && root.lastShare < root.leastShare ? root.width * root.drawnInShare : root.width
        text: root.text
        wrapMode: Text.Wrap
        horizontalAlignment: root.isCentered ? Text.AlignHCenter : Text.AlignLeft
    }
}
