import QtQuick 2.12
import QtTest 1.2
import Orvanta.Styles 1.0

TestCase {
    id: testCase
    name: "Styles"

    readonly property string colorsJson: JSON.stringify({
        accent: "#1f7ad4",
        shade: "rgba(10, 20, 30, 0.5)",
        broken: "rgba(10,20,30)",
        spaced: "rgba( 200 ,100, 50 , 1 )",
        unreadable: "rgba(x, 20, 30, 0.25)",
        count: 3
    })

    Item {
        id: bound
        property color accent: Colors.accent
        property var shade: Colors.shade
        property var missing: Colors.noSuchColour
        property var link: Constants.linkColor
    }

    function init() {
        Harness.loadColors(colorsJson)
        Harness.loadSheet("/* Stylesheet Constants\nlinkColor = @accent\nmargin = 4\n*/\nQLabel { color: @linkColor; }")
    }

    function test_valuesAreTheTable_data() {
        return [
            { tag: "#RRGGBB stays a string", name: "accent", type: "string" },
            { tag: "rgba becomes a colour", name: "shade", type: "object" },
            { tag: "rgba of three parts: invalid colour", name: "broken", type: "object" },
            { tag: "rgba with spaces", name: "spaced", type: "object" },
            { tag: "rgba with an unreadable part", name: "unreadable", type: "object" },
            { tag: "a number stays a number", name: "count", type: "number" }
        ]
    }
    function test_valuesAreTheTable(data) {
        var built = Harness.builtColors()
        compare(typeof Colors[data.name], data.type)
        if (data.type === "object")
            verify(Harness.sameColor(Colors[data.name], built[data.name]))
        else
            compare(Colors[data.name], built[data.name])
    }

    function test_rgbaParts() {
        compare(Colors.shade.r * 255, 10)
        compare(Colors.shade.a, 0.5)
        compare(Colors.spaced.g * 255, 100)
        compare(Colors.unreadable.r, 0)
        compare(Colors.unreadable.a, 0.25)
        verify(!Harness.sameColor(Colors.broken, "black"))
    }

    function test_constantsAreTheSheets() {
        compare(Constants.linkColor, Harness.cssData("linkColor"))
        compare(Constants.margin, "4")
        // Colours win over constants of their name.
        compare(Constants.accent, "#1f7ad4")
    }

    function test_bindingsFollowAReload() {
        compare(bound.accent, "#1f7ad4")
        Harness.loadColors(JSON.stringify({ accent: "#ff0000", shade: "rgba(1, 2, 3, 1)" }))
        compare(bound.accent, "#ff0000")
        verify(Harness.sameColor(bound.shade, Qt.rgba(1 / 255, 2 / 255, 3 / 255, 1)))
        Harness.loadSheet("/* Stylesheet Constants\nlinkColor = #00ff00\n*/\n")
        compare(bound.link, "#00ff00")
    }

    function test_failedReloadKeepsTheColours() {
        var mark = Harness.logMark()
        Harness.loadColors("{ not json")
        compare(bound.accent, "#1f7ad4")
        compare(Colors.count, 3)
        compare(Harness.logSince(mark).length, 1)
    }

    function test_missingNameIsUndefinedAndToldOnce() {
        var mark = Harness.logMark()
        compare(Colors.nothingHere, undefined)
        compare(Colors.nothingHere, undefined)
        compare(Constants.nothingHereEither, undefined)
        compare(Harness.logSince(mark), [
            "3 Orvanta.Styles: Colors has no \"nothingHere\"; it reads as undefined",
            "3 Orvanta.Styles: Constants has no \"nothingHereEither\"; it reads as undefined"])
    }

    function test_missingNameThatComesLaterIsFollowed() {
        compare(bound.missing, undefined)
        Harness.loadColors(JSON.stringify({ noSuchColour: "#123456" }))
        compare(bound.missing, "#123456")
        // Gone again: undefined again.
        Harness.loadColors(JSON.stringify({ accent: "#000000" }))
        compare(bound.missing, undefined)
    }

    function test_membersOfTheMapAreNoColours() {
        var mark = Harness.logMark()
        verify(Colors.keys().indexOf("accent") >= 0)
        compare(Harness.logSince(mark), [])
    }
}
