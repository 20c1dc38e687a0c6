pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tavrin

// The first steps, over the whole window: four pages, of which the user may skip what is left.
FocusScope {
    id: root

    required property ContentModel content

    readonly property int totalSteps: 4
    property int currentStep: 0
    readonly property bool isLastStep: currentStep === totalSteps - 1

    focus: true

    Accessible.role: Accessible.Dialog
    Accessible.name: "Chào mừng đến với Tavrin"

    Component.onCompleted: forward.forceActiveFocus()

    function step(by: int): void {
        currentStep = Math.max(0, Math.min(totalSteps - 1, currentStep + by));
    }

    function page(): ScrollPage {
        return [welcome, permission, actions, setup][currentStep].item as ScrollPage;
    }

    // What had the keyboard may have gone with its page.
    onCurrentStepChanged: {
        if (currentStep === 0 || !back.activeFocus)
            forward.forceActiveFocus();
    }

    // The page scrolls by the keys, although a button has them.
    Keys.onPressed: event => page().scroll(event)

    // The permission is given outside, and nobody says so.
    Timer {
        interval: 1000
        repeat: true
        running: root.Window.visibility !== Window.Hidden
        triggeredOnStart: true
        onTriggered: root.content.readAccessibility()
    }

    Rectangle {
        anchors.fill: parent
        color: "black"
        opacity: 0.8

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            hoverEnabled: true
            onWheel: wheel => wheel.accepted = true
        }
    }

    Rectangle {
        id: panel

        anchors.centerIn: parent
        width: Math.min(580, root.width - 20)
        height: Math.min(520, root.height - 20)
        radius: 13
        color: Theme.sheet

        Row {
            id: capsules

            x: 24
            y: 20
            spacing: 6

            Accessible.role: Accessible.StaticText
            Accessible.name: "Bước " + (root.currentStep + 1) + "/" + root.totalSteps

            Repeater {
                model: root.totalSteps

                Rectangle {
                    id: capsule

                    required property int index
                    readonly property bool isCurrent: index === root.currentStep

                    width: isCurrent ? 26 : 10
                    height: 6
                    radius: 3
                    color: index <= root.currentStep ? Theme.accent : Theme.switchOff

                    Behavior on width {
                        NumberAnimation {
                            duration: 180
                            easing.type: Easing.InOutQuad
                        }
                    }
                }
            }
        }

        TextButton {
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: capsules.verticalCenter
            visible: !root.isLastStep
            text: "Bỏ qua"
            textSize: 12
            color: Theme.secondaryText
            onClicked: root.content.finishOnboarding()
        }

        Divider {
            id: line

            y: 46
            width: parent.width
        }

        Item {
            id: place

            anchors.top: line.bottom
            anchors.bottom: footer.top
            width: parent.width

            Lazy {
                id: welcome

                anchors.fill: parent
                active: root.currentStep === 0

                WelcomePage { }
            }

            Lazy {
                id: permission

                anchors.fill: parent
                active: root.currentStep === 1

                PermissionPage {
                    content: root.content
                }
            }

            Lazy {
                id: actions

                anchors.fill: parent
                active: root.currentStep === 2

                ActionsPage { }
            }

            Lazy {
                id: setup

                anchors.fill: parent
                active: root.currentStep === 3

                SetupPage {
                    content: root.content
                }
            }
        }

        Item {
            id: footer

            anchors.bottom: parent.bottom
            width: parent.width
            height: 60

            Divider {
                width: parent.width
            }

            PillButton {
                id: back

                anchors.left: parent.left
                anchors.leftMargin: 24
                anchors.verticalCenter: parent.verticalCenter
                visible: root.currentStep >= 1
                text: "Quay lại"
                symbol: "chevron.left"
                onClicked: root.step(-1)
            }

            PillButton {
                id: forward

                anchors.right: parent.right
                anchors.rightMargin: 24
                anchors.verticalCenter: parent.verticalCenter
                text: root.isLastStep ? "Bắt đầu sử dụng" : "Tiếp tục"
                symbol: root.isLastStep ? "sparkles" : "chevron.right"
                isSymbolTrailing: !root.isLastStep
                kind: PillButton.Prominent
                onClicked: {
                    if (root.isLastStep)
                        root.content.finishOnboarding();
                    else
                        root.step(1);
                }
            }
        }
    }
}
