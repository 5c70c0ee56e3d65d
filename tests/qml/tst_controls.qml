import QtQuick 2.12
import QtTest 1.2
import Orvanta.Controls 1.0

TestCase {
    id: testCase
    name: "Controls"
    width: 400
    height: 300
    visible: true
    when: windowShown

    readonly property var controlNames: ["Button", "ToolButton", "CheckBox", "TextField", "SearchField", "ComboBox",
        "BusyIndicatorRing", "ProgressBar", "CollapsingPane", "NotificationBar", "Toast"]
    readonly property var colorNames: ["windowBackground", "panelBackground", "hoverBackground", "borderColor",
        "primaryText", "mutedText", "accentColor", "accentText", "informationBackground", "positiveBackground",
        "warningBackground", "errorBackground", "notificationText", "pressedBackground", "disabledText",
        "focusFrame", "progressTrack"]

    // Every name a colour of its own, told apart by the red part; the second table by green.
    function table(green) {
        var colors = {}
        for (var i = 0; i < colorNames.length; ++i)
            colors[colorNames[i]] = Qt.rgba((10 + i) / 255, green / 255, 0.5, 1).toString()
        return colors
    }
    function read(url) {
        var request = new XMLHttpRequest()
        request.open("GET", url, false)
        request.send()
        return request.responseText
    }
    // The children of an item that are dots or rows: those with the property asked.
    function childrenWith(item, property) {
        var found = []
        for (var i = 0; i < item.children.length; ++i) {
            if (item.children[i][property] !== undefined)
                found.push(item.children[i])
        }
        return found
    }
    function make(source) {
        return createTemporaryQmlObject("import QtQuick 2.12; import Orvanta.Controls 1.0; " + source, testCase)
    }

    function init() {
        Harness.loadColors(JSON.stringify(table(40)))
    }

    function test_createdThroughTheImport_data() {
        return controlNames.map(function (name) { return { tag: name, name: name } })
    }
    function test_createdThroughTheImport(data) {
        var mark = Harness.logMark()
        var control = make(data.name + " { width: 200 }")
        verify(control)
        wait(0)
        // Every colour it reads is in the table.
        compare(Harness.logSince(mark), [])
    }

    // No import of QtQuick.Controls (an outside style must not reach them), no colour of
    // their own: only transparent.
    function test_sourcesTakeOnlyTemplatesAndColors_data() {
        return controlNames.map(function (name) { return { tag: name, name: name } })
    }
    function test_sourcesTakeOnlyTemplatesAndColors(data) {
        var source = read("qrc:/qt-project.org/imports/Orvanta/Controls/" + data.name + ".qml")
        var imports = source.match(/^import .*$/mg)
        verify(imports.length > 0)
        imports.forEach(function (line) {
            verify(/^import (QtQuick 2\.12|QtQuick\.Window 2\.12|QtQuick\.Templates 2\.12 as T|Orvanta\.Styles 1\.0)$/.test(line), line)
        })
        compare(source.match(/"#[0-9A-Fa-f]+"|Qt\.rgba\(\s*[0-9.]/g), null)
        var named = (source.match(/color: *"[a-z]+"/g) || []).filter(function (c) { return c.indexOf("transparent") < 0 })
        compare(named, [])
    }

    // Whatever the controls read, both gallery themes give.
    function test_galleryThemesHaveEveryName() {
        var used = {}
        controlNames.forEach(function (name) {
            var source = read("qrc:/qt-project.org/imports/Orvanta/Controls/" + name + ".qml")
            verify(source.length > 0, name)
            var found = source.match(/Colors\.[A-Za-z]+/g) || []
            found.forEach(function (token) { used[token.slice(7)] = true })
        })
        verify(Object.keys(used).length >= 15)
        ;["colors_light.json", "colors_dark.json"].forEach(function (file) {
            var theme = JSON.parse(read(Qt.resolvedUrl("../../examples/gallery/theme/" + file)))
            for (var name in used)
                verify(theme[name] !== undefined, file + " lacks " + name)
        })
        for (var name in used)
            verify(colorNames.indexOf(name) >= 0, name)
    }

    function test_colorsFollowAReload_data() {
        return [
            { tag: "Button", source: "Button {}", part: "background", name: "panelBackground" },
            { tag: "Button text", source: "Button { text: 'x' }", part: "contentItem", name: "primaryText" },
            { tag: "highlighted Button", source: "Button { highlighted: true }", part: "background", name: "accentColor" },
            { tag: "disabled Button text", source: "Button { enabled: false }", part: "contentItem", name: "disabledText" },
            { tag: "checked ToolButton", source: "ToolButton { checkable: true; checked: true }", part: "background",
              name: "pressedBackground" },
            { tag: "checked CheckBox", source: "CheckBox { checked: true }", part: "indicator", name: "accentColor" },
            { tag: "CheckBox", source: "CheckBox {}", part: "indicator", name: "panelBackground" },
            { tag: "TextField", source: "TextField {}", part: "", name: "primaryText" },
            { tag: "TextField frame", source: "TextField {}", part: "background", name: "panelBackground" },
            { tag: "ComboBox", source: "ComboBox { model: ['a'] }", part: "contentItem", name: "primaryText" },
            { tag: "BusyIndicatorRing", source: "BusyIndicatorRing {}", part: "", name: "accentColor" },
            { tag: "ProgressBar track", source: "ProgressBar {}", part: "background", name: "progressTrack" },
            { tag: "warning NotificationBar", source: "NotificationBar { type: NotificationBar.Warning }",
              part: "background", name: "warningBackground" },
            { tag: "error NotificationBar", source: "NotificationBar { type: NotificationBar.Error }",
              part: "background", name: "errorBackground" }
        ]
    }
    function test_colorsFollowAReload(data) {
        var control = make(data.source)
        var item = data.part ? control[data.part] : control
        verify(Harness.sameColor(item.color, table(40)[data.name]), item.color + " " + table(40)[data.name])
        Harness.loadColors(JSON.stringify(table(90)))
        verify(Harness.sameColor(item.color, table(90)[data.name]), item.color + " " + table(90)[data.name])
    }

    function test_buttonsClick_data() {
        return [
            { tag: "Button", source: "Button { text: 'Go' }" },
            { tag: "ToolButton", source: "ToolButton { text: 'Go' }" }
        ]
    }
    function test_buttonsClick(data) {
        var button = make(data.source)
        var clicks = createTemporaryObject(spy, testCase, { target: button, signalName: "clicked" })
        mouseClick(button)
        compare(clicks.count, 1)
        button.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        compare(clicks.count, 2)
        compare(button.Accessible.name, "Go")
        verify(button.width > 0 && button.height > 0)
    }

    function test_checkBoxToggles_data() {
        return [
            { tag: "mouse", key: false, tristate: false, states: [Qt.Checked, Qt.Unchecked] },
            { tag: "Space", key: true, tristate: false, states: [Qt.Checked, Qt.Unchecked] },
            { tag: "tristate by Space", key: true, tristate: true, states: [Qt.PartiallyChecked, Qt.Checked, Qt.Unchecked] }
        ]
    }
    function test_checkBoxToggles(data) {
        var box = make("CheckBox { text: 'Wrap'; tristate: " + data.tristate + " }")
        var toggles = createTemporaryObject(spy, testCase, { target: box, signalName: "checkStateChanged" })
        box.forceActiveFocus(Qt.TabFocusReason)
        for (var i = 0; i < data.states.length; ++i) {
            if (data.key)
                keyClick(Qt.Key_Space)
            else
                mouseClick(box)
            compare(box.checkState, data.states[i])
            compare(findChild(box.indicator, "checkMark").visible, box.checkState === Qt.Checked)
            compare(findChild(box.indicator, "partialMark").visible, box.checkState === Qt.PartiallyChecked)
        }
        compare(toggles.count, data.states.length)
    }

    function test_comboBoxPicks_data() {
        return [
            { tag: "list", model: "['Red', 'Green', 'Blue']", role: "" },
            { tag: "objects with a text role", model: "[{ name: 'Red' }, { name: 'Green' }, { name: 'Blue' }]", role: "name" }
        ]
    }
    function test_comboBoxPicks(data) {
        var combo = make("ComboBox { textRole: '" + data.role + "'; model: " + data.model + " }")
        var activated = createTemporaryObject(spy, testCase, { target: combo, signalName: "activated" })
        compare(combo.displayText, "Red")
        combo.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Down)
        compare(combo.currentIndex, 1)
        compare(combo.contentItem.text, "Green")
        // The list opens on Space; Down and Return pick.
        keyClick(Qt.Key_Space)
        tryCompare(combo.popup, "opened", true)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Return)
        tryCompare(combo.popup, "visible", false)
        compare(combo.currentIndex, 2)
        compare(combo.displayText, "Blue")
        // The mouse: open, click the first row.
        mouseClick(combo)
        tryCompare(combo.popup, "opened", true)
        var list = combo.popup.contentItem
        var row = childrenWith(list.contentItem, "text").filter(function (child) { return child.text === "Red" })[0]
        verify(row)
        mouseClick(row)
        tryCompare(combo.popup, "visible", false)
        compare(combo.currentIndex, 0)
        compare(activated.count, 3)
    }

    function test_comboBoxWithoutModelIsQuiet() {
        var combo = make("ComboBox {}")
        compare(combo.currentIndex, -1)
        compare(combo.displayText, "")
        combo.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Down)
        compare(combo.currentIndex, -1)
        combo.model = []
        compare(combo.count, 0)
    }

    function test_progressBarFill_data() {
        return [
            { tag: "half", value: 50, fill: 0.5 },
            { tag: "above the range", value: 150, fill: 1 },
            { tag: "negative", value: -20, fill: 0 },
            { tag: "NaN", value: NaN, fill: 0 }
        ]
    }
    function test_progressBarFill(data) {
        var bar = make("ProgressBar { width: 200; from: 0; to: 100; value: 10 }")
        var fill = findChild(bar, "bar")
        tryCompare(fill, "width", 20)
        bar.value = data.value
        compare(bar.fill, data.fill)
        // The fill moves there; the animation ends at the value.
        tryCompare(fill, "width", 200 * data.fill)
    }

    function test_progressBarSweepsWhileIndeterminateAndVisible() {
        var bar = make("ProgressBar { width: 200; indeterminate: true }")
        var sweep = findChild(bar, "sweep")
        verify(sweep.visible)
        var first = sweep.x
        tryVerify(function () { return sweep.x !== first })
        bar.visible = false
        var hidden = sweep.x
        wait(100)
        compare(sweep.x, hidden)
        bar.indeterminate = false
        bar.visible = true
        verify(!sweep.visible)
    }

    function test_busyRingTurnsOnlyWhileVisibleAndRunning() {
        var ring = make("BusyIndicatorRing { width: 48; height: 48 }")
        compare(ring.contentItem.children.length, 13) // twelve dots and the repeater
        compare(ring.Accessible.name, "Busy")
        tryVerify(function () { return ring.currentStep > 0 })
        verify(ring.animating)
        ring.visible = false
        verify(!ring.animating)
        var step = ring.currentStep
        wait(200)
        compare(ring.currentStep, step)
        ring.visible = true
        verify(ring.animating)
        // Hidden with a parent.
        holder.visible = false
        ring.parent = holder
        verify(!ring.animating)
        ring.parent.visible = true
        verify(ring.animating)
        ring.running = false
        verify(!ring.animating)
        // Standing still, every dot alike.
        var dots = childrenWith(ring.contentItem, "radius")
        compare(dots.length, 12)
        for (var i = 1; i < dots.length; ++i)
            verify(Harness.sameColor(dots[i].color, dots[0].color))
    }

    function test_busyRingShadesTheTail() {
        var ring = make("BusyIndicatorRing { width: 48; height: 48; running: false; color: 'red' }")
        ring.running = true
        var dots = childrenWith(ring.contentItem, "radius")
        var bright = dots[ring.currentStep]
        ring.running = false
        ring.running = true
        compare(bright.color.a, 1)
        var alphas = dots.map(function (dot) { return dot.color.a })
        alphas.sort()
        compare(alphas[0], 0.15)
        // Dots of 48 / 6 on a ring that touches the edges.
        compare(dots[0].width, 8)
        compare(dots[0].y, 0)
        compare(dots[3].x, 40)
    }

    Item {
        id: holder
        width: 100
        height: 100
    }
    Component {
        id: spy
        SignalSpy {}
    }
}
