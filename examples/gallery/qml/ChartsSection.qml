import QtQuick 2.12
import Orvanta.Controls 1.0
import Orvanta.Styles 1.0

// The three charts as QML items, drawn by the code that draws the chart widgets.
Rectangle {
    id: root
    color: Colors.panelBackground
    border.color: Colors.borderColor
    radius: 4
    implicitHeight: row.implicitHeight + 24

    Row {
        id: row
        x: 12
        y: 12
        spacing: 24

        BarChart {
            width: 320
            chartHeight: 20
            percents: [45, 35, 20]
            colors: [Colors.accentColor, Colors.positiveBackground, Colors.warningBackground]
            legends: [qsTr("Photos"), qsTr("Music"), qsTr("Other")]
            legendLineColors: [Colors.accentColor, Colors.positiveBackground, Colors.warningBackground]
            borderColor: Colors.borderColor
        }
        PieChart {
            width: 90
            height: 90
            value: 68
            color: Colors.accentColor
            ringColor: Colors.hoverBackground
        }
        Plot {
            id: plot
            width: 150
            height: 80
            brushColor: Colors.accentColor
            polling: true
            pollingTimeout: 250
            Timer {
                interval: 250
                running: true
                repeat: true
                property int step: 0
                onTriggered: plot.value = 40 + Math.round(30 * Math.sin(++step / 3))
            }
        }
    }
}
