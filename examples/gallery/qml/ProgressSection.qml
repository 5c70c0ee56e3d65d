import QtQuick 2.12
import Orvanta.Controls 1.0
import Orvanta.Styles 1.0

// The busy ring, progress bars and a collapsing pane.
Rectangle {
    id: root
    color: Colors.panelBackground
    border.color: Colors.borderColor
    radius: 4
    implicitHeight: column.implicitHeight + 24

    Column {
        id: column
        x: 12
        y: 12
        width: root.width - 24
        spacing: 10

        Row {
            spacing: 16
            BusyIndicatorRing { running: true }
            Column {
                spacing: 8
                anchors.verticalCenter: parent.verticalCenter
                ProgressBar { width: 240; value: 0.35 }
                ProgressBar { width: 240; value: 0.8 }
            }
        }
        Button {
            text: pane.expanded ? qsTr("Hide the details") : qsTr("Show the details")
            onClicked: pane.toggle()
        }
        CollapsingPane {
            id: pane
            objectName: "DetailsPane"
            width: parent.width
            expanded: true
            Rectangle {
                width: pane.width
                height: 64
                color: Colors.hoverBackground
                radius: 3
                Text {
                    anchors.fill: parent
                    anchors.margins: 10
                    wrapMode: Text.WordWrap
                    color: Colors.primaryText
                    text: qsTr("The pane animates its height with the collapsing pane widget's duration and easing.")
                }
            }
        }
    }
}
