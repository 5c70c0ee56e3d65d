import QtQuick 2.12
import QtTest 1.2
import Orvanta.Controls 1.0
import Orvanta.Styles 1.0

// The charts of the module in a scene; a TestCase itself is not drawn.
Item {
    width: 300
    height: 300

    BarChart {
        id: bar
        width: 200
        percents: [50, 50]
        colors: [Colors.chartFill, Colors.chartBack]
        legends: ["Used", "Free"]
        legendLineColors: [Colors.chartFill]
        borderColor: Colors.chartFill
    }
    PieChart {
        id: pie
        y: 100
        width: 60
        height: 60
        value: 25
        color: Colors.chartFill
        ringColor: Colors.chartBack
    }
    Plot {
        id: plot
        y: 170
        width: 100
        height: 50
        brushColor: Colors.chartFill
    }

    TestCase {
        name: "Charts"
        when: windowShown

        function init() {
            Harness.loadColors(JSON.stringify({ chartFill: "#ff0000", chartBack: "#0000ff" }))
        }

        function test_madeThroughTheModule_data() {
            return [
                { tag: "BarChart: the bar and a legend line", item: bar, height: 8 + 8 + 13 },
                { tag: "PieChart", item: pie, height: 100 },
                { tag: "Plot", item: plot, height: 60 }
            ]
        }
        function test_madeThroughTheModule(data) {
            verify(data.item.implicitWidth > 0)
            verify(data.item.implicitHeight >= data.height)
        }

        // A pixel of what each chart paints in a bound colour, before and after a reload.
        function test_boundColoursFollowAReload_data() {
            return [
                { tag: "BarChart section", item: bar, x: 52, y: 12, back: false },
                { tag: "BarChart second section", item: bar, x: 150, y: 12, back: true },
                { tag: "PieChart slice", item: pie, x: 45, y: 15, back: false },
                { tag: "PieChart ring", item: pie, x: 15, y: 45, back: true },
                { tag: "Plot fill", item: plot, x: 23, y: 45, back: false }
            ]
        }
        function test_boundColoursFollowAReload(data) {
            verify(Harness.sameColor(grabImage(data.item).pixel(data.x, data.y), data.back ? "#0000ff" : "#ff0000"))
            Harness.loadColors(JSON.stringify({ chartFill: "#00ff00", chartBack: "#ffff00" }))
            verify(Harness.sameColor(grabImage(data.item).pixel(data.x, data.y), data.back ? "#ffff00" : "#00ff00"))
        }

        function test_hoverHighlightsASection() {
            mouseMove(bar, 150, 12)
            tryCompare(bar, "hoveredIndex", 1)
            mouseMove(bar, 150, 60)
            tryCompare(bar, "hoveredIndex", -1)
        }
    }
}
