import QtQuick
import Tavrin

// A symbol by its name, in one colour.
Image {
    id: root

    required property string name
    property color color: Theme.text
    // Side of the square, in points.
    property real size: 16

    readonly property int pixels: Math.ceil(size * Theme.pixelRatio)

    width: size
    height: size
    source: name === "" ? "" : "image://symbol/" + name + "/" + color
    sourceSize.width: pixels
    sourceSize.height: pixels

    Accessible.ignored: true
}
