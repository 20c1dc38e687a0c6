import QtQuick
import QtQuick.Window

// The picture of an application.
Image {
    readonly property int pixels: Math.ceil(width * Screen.devicePixelRatio)

    width: 32
    height: 32
    sourceSize.width: pixels
    sourceSize.height: pixels

    Accessible.ignored: true
}
