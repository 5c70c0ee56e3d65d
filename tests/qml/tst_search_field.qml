import QtQuick 2.12
import QtTest 1.2
import Orvanta.Controls 1.0

TestCase {
    id: testCase
    name: "SearchField"
    width: 400
    height: 200
    visible: true
    when: windowShown

    property var field
    property int escapes: 0
    Keys.onEscapePressed: ++escapes
    property var started
    property var reset

    function init() {
        Harness.loadColors(JSON.stringify({ panelBackground: "#ffffff", hoverBackground: "#eeeeee",
            pressedBackground: "#dddddd", borderColor: "#cccccc", primaryText: "#111111", mutedText: "#777777",
            disabledText: "#aaaaaa", accentColor: "#1f7ad4", accentText: "#ffffff", focusFrame: "#1f7ad4" }))
        field = createTemporaryObject(fieldComponent, testCase)
        started = createTemporaryObject(spy, testCase, { target: field, signalName: "searchStarted" })
        reset = createTemporaryObject(spy, testCase, { target: field, signalName: "searchReset" })
        escapes = 0
        // Away, so that moving onto the button is a move.
        mouseMove(testCase, testCase.width - 1, testCase.height - 1)
    }
    function type(text) {
        field.forceActiveFocus()
        text.split("").forEach(function (key) { keyClick(key) })
    }
    function button() {
        return findChild(field, "searchButton")
    }

    function test_searchStarts_data() {
        return [
            { tag: "after the typing delay", button: false, finish: "" },
            { tag: "on Return at once", button: false, finish: "return" },
            { tag: "with the button, on Return", button: true, finish: "return" },
            { tag: "with the button, on a click", button: true, finish: "click" }
        ]
    }
    function test_searchStarts(data) {
        compare(field.typingDelay, 1000)
        compare(button().Accessible.name, "Search")
        field.searchButtonVisible = data.button
        type("ab")
        // Nothing yet: the timer runs only without the button.
        compare(started.count, 0)
        compare(field.typing, !data.button)
        if (data.finish === "return")
            keyClick(Qt.Key_Return)
        else if (data.finish === "click")
            mouseClick(button())
        if (data.finish !== "")
            compare(started.count, 1)
        tryCompare(started, "count", 1)
        compare(started.signalArguments[0][0], "ab")
        compare(field.typing, false)
        compare(field.cancelMode, true)
        compare(button().Accessible.name, "Clear search")
        verify(findChild(field, "cross") !== null && !findChild(field, "magnifier").visible)
        // The typing timer was stopped: no second search.
        wait(field.typingDelay + 200)
        compare(started.count, 1)
        compare(reset.count, 0)
    }

    function test_crossClears_data() {
        return [
            { tag: "click on the cross", button: false, key: false },
            { tag: "Escape", button: false, key: true },
            { tag: "click with the search button", button: true, key: false }
        ]
    }
    function test_crossClears(data) {
        field.searchButtonVisible = data.button
        type("query")
        keyClick(Qt.Key_Return)
        // The button: at the right end, inside the field and beside the text, lit under the pointer.
        var b = button(), glyph = findChild(field, "cross")
        verify(b.x > field.width / 2 && b.x + b.width <= field.width && field.rightPadding >= b.width)
        verify(glyph.x >= 0 && glyph.x + glyph.width <= b.width)
        mouseMove(b, 5, 5)
        verify(Harness.sameColor(b.background.color, "#eeeeee"))
        data.key ? keyClick(Qt.Key_Escape) : mouseClick(b)
        compare(field.text, "")
        compare(reset.count, 1)
        compare(started.count, 1)
        compare(field.cancelMode, false)
        glyph = findChild(field, "magnifier")
        verify(glyph.visible && glyph.x >= 0 && glyph.x + glyph.width + 4 <= b.width)
        compare(findChild(field, "cross"), null)
        compare(escapes, 0)
    }

    // Return on nothing, a text erased, a click on the magnifier without the button.
    function test_noSearch_data() {
        return [
            { tag: "Return on an empty field", keys: [Qt.Key_Return], click: false, resets: 0, text: "" },
            { tag: "text erased", keys: [Qt.Key_X, Qt.Key_Backspace], click: false, resets: 1, text: "" },
            { tag: "magnifier without the button", keys: [Qt.Key_X], click: true, resets: 0, text: "x" },
            // Escape with nothing to clear is the parent's.
            { tag: "Escape on an empty field", keys: [Qt.Key_Escape], click: false, resets: 0, text: "", escapes: 1 }
        ]
    }
    function test_noSearch(data) {
        field.typingDelay = 100
        field.forceActiveFocus()
        data.keys.forEach(function (key) { keyClick(key) })
        if (data.click)
            mouseClick(button())
        compare(reset.count, data.resets)
        compare(field.text, data.text)
        compare(field.typing, data.text !== "")
        compare(escapes, data.escapes || 0)
        if (data.text === "") {
            wait(300)
            compare(started.count, 0)
            compare(field.cancelMode, false)
        }
    }

    function test_cueShowsWhileEmptyAndUnfocused_data() {
        return [
            { tag: "unfocused and empty", focus: false, text: "", shown: true },
            { tag: "focused", focus: true, text: "", shown: false },
            { tag: "with a text", focus: false, text: "x", shown: false }
        ]
    }
    function test_cueShowsWhileEmptyAndUnfocused(data) {
        field.text = data.text
        if (data.focus)
            field.forceActiveFocus()
        var cue = findChild(field, "placeholder")
        compare(cue.visible, data.shown)
        verify(cue.font.italic)
        compare(cue.text, "Search")
    }

    function test_negativeDelaySearchesAtOnceQuietly() {
        field.typingDelay = -5
        type("a")
        tryCompare(started, "count", 1)
    }

    Component {
        id: fieldComponent
        SearchField { width: 200 }
    }
    Component {
        id: spy
        SignalSpy {}
    }
}
