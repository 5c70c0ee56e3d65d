import QtQuick 2.12
import Orvanta.Controls 1.0
import Orvanta.Styles 1.0

// The four kinds of notification bar, and toasts over the panel's corner.
Rectangle {
    id: root
    color: Colors.panelBackground
    border.color: Colors.borderColor
    radius: 4
    implicitHeight: column.implicitHeight + 24
    clip: true

    Column {
        id: column
        x: 12
        y: 12
        width: root.width - 24
        spacing: 6

        Repeater {
            model: [
                { type: NotificationBar.Information, text: qsTr("A new version is ready to install.") },
                { type: NotificationBar.Positive, text: qsTr("All files were saved.") },
                { type: NotificationBar.Warning, text: qsTr("The disk is almost full.") },
                { type: NotificationBar.Error, text: qsTr("The server cannot be reached. <a href=\"retry\">Try again</a>") }
            ]
            delegate: NotificationBar {
                width: column.width
                type: modelData.type
                text: modelData.text
                showing: true
            }
        }
        Button {
            text: qsTr("Show a toast")
            onClicked: toasts.post(Toast.Positive, qsTr("Saved a copy in Documents."), 4000, qsTr("Open"))
        }
        Item { width: 1; height: 70 }
    }

    Toast {
        id: toasts
        position: Toast.BottomRight
        Component.onCompleted: post(Toast.Information, qsTr("Toasts wait while the pointer is over them."), 0)
    }
}
