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

    Component {
        id: fieldComponent
        SearchField { width: 200 }
    }
    Component {
        id: spy
        SignalSpy {}
    }

    property var field
    property var started
    property var reset

    function init() {
        Harness.loadColors(JSON.stringify({ panelBackground: "#ffffff", hoverBackground: "#eeeeee",
            pressedBackground: "#dddddd", borderColor: "#cccccc", primaryText: "#111111", mutedText: "#777777",
            disabledText: "#aaaaaa", accentColor: "#1f7ad4", accentText: "#ffffff", focusFrame: "#1f7ad4" }))
        field = createTemporaryObject(fieldComponent, testCase)
        started = createTemporaryObject(spy, testCase, { target: field, signalName: "searchStarted" })
        reset = createTemporaryObject(spy, testCase, { target: field, signalName: "searchReset" })
    }
    function type(text) {
        field.forceActiveFocus()
        for (var i = 0; i < text.length; ++i)
            keyClick(text[i])
    }

    function test_defaultsOfTheSearchBox() {
        compare(field.typingDelay, 1000)
        compare(field.searchButtonVisible, false)
        compare(field.cancelMode, false)
        compare(field.placeholderText, "Search")
        compare(findChild(field, "searchButton").Accessible.name, "Search")
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
        field.searchButtonVisible = data.button
        type("ab")
        // Nothing yet: the timer runs only without the button.
        compare(started.count, 0)
        compare(field.typing, !data.button)
        if (data.finish === "return")
            keyClick(Qt.Key_Return)
        else if (data.finish === "click")
            mouseClick(findChild(field, "searchButton"))
        if (data.finish !== "")
            compare(started.count, 1)
        tryCompare(started, "count", 1)
        compare(started.signalArguments[0][0], "ab")
        compare(field.typing, false)
        compare(field.cancelMode, true)
        compare(findChild(field, "searchButton").Accessible.name, "Clear search")
        verify(findChild(field, "cross") !== null)
        verify(!findChild(field, "magnifier").visible)
        // The typing timer was stopped: no second search.
        wait(field.typingDelay + 200)
        compare(started.count, 1)
        compare(reset.count, 0)
    }

    function test_keysWithinTheDelayMakeOneSearch() {
        field.typingDelay = 300
        type("a")
        type("b")
        type("c")
        tryCompare(started, "count", 1)
        compare(started.signalArguments[0][0], "abc")
        wait(600)
        compare(started.count, 1)
    }

    function test_returnOnAnEmptyFieldSearchesNothing() {
        field.forceActiveFocus()
        keyClick(Qt.Key_Return)
        compare(started.count, 0)
        compare(field.cancelMode, false)
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
        verify(field.cancelMode)
        if (data.key)
            keyClick(Qt.Key_Escape)
        else
            mouseClick(findChild(field, "searchButton"))
        compare(field.text, "")
        compare(reset.count, 1)
        compare(started.count, 1)
        compare(field.cancelMode, false)
        verify(findChild(field, "magnifier").visible)
        compare(findChild(field, "cross"), null)
    }

    function test_erasingTheTextResets() {
        type("x")
        keyClick(Qt.Key_Backspace)
        compare(reset.count, 1)
        compare(field.typing, false)
        wait(field.typingDelay + 200)
        compare(started.count, 0)
    }

    function test_magnifierClickWithoutTheButtonDoesNothing() {
        type("x")
        mouseClick(findChild(field, "searchButton"))
        compare(started.count, 0)
        compare(field.text, "x")
        compare(field.typing, true)
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
}
