pragma Singleton

import QtQuick
import Velmorand.Settings

/// Colours, sizes, type and motion of the window: nothing else knows a number.
QtObject {
    id: theme

    // The palette.
    readonly property color ink: "#25313B"
    readonly property color slate: "#6C6C67"
    readonly property color paper: "#FBF6EF"
    readonly property color cream: "#FAF2E7"
    readonly property color sage: "#7E9692"
    readonly property color sand: "#D5C1A5"
    readonly property color stone: "#C4BFB3"
    readonly property color bronze: "#7A4F18"

    // What is made of it.
    readonly property color card: "#FFFDFA"
    readonly property color edge: "#E9DECD"
    readonly property color rule: "#F0E8DB"
    readonly property color line: "#D9CBB5"
    readonly property color lineStrong: "#857E70"
    readonly property color selected: "#F2E3CD"
    readonly property color hover: "#F5EADB"
    readonly property color down: "#E9DAC4"
    readonly property color track: "#E4D8C5"
    readonly property color tileOff: "#E2DACB"
    readonly property color sageDeep: "#4F6F69"
    readonly property color sageDark: "#43605B"
    readonly property color bronzeHover: "#8A5C22"
    readonly property color bronzeDown: "#653F10"
    readonly property color brick: "#A8321E"
    readonly property color brickPale: "#FBEDE7"
    readonly property color brickEdge: "#EBCBBF"
    readonly property color sandPale: "#FBF1DF"
    readonly property color sandEdge: "#E6D3B3"

    readonly property real disabledOpacity: 0.45

    // Type.
    readonly property string fontFamily: DesktopLook.fontFamily

    readonly property TypeRole paneTitle: TypeRole {
        size: 22
        line: 32
        weight: Font.DemiBold
        color: theme.ink
    }
    readonly property TypeRole aboutName: TypeRole {
        size: 22
        line: 28
        weight: Font.DemiBold
        color: theme.ink
    }
    readonly property TypeRole sidebarName: TypeRole {
        size: 20
        line: 28
        weight: Font.DemiBold
        color: theme.ink
    }
    readonly property TypeRole welcome: TypeRole {
        size: 20
        line: 26
        weight: Font.DemiBold
        color: theme.ink
    }
    readonly property TypeRole cardTitle: TypeRole {
        size: 15
        line: 20
        weight: Font.DemiBold
        color: theme.ink
    }
    readonly property TypeRole body: TypeRole {
        size: 13
        line: 20
        weight: Font.Normal
        color: theme.ink
    }
    readonly property TypeRole strong: TypeRole {
        size: 13
        line: 20
        weight: Font.Medium
        color: theme.ink
    }
    readonly property TypeRole shortcutTitle: TypeRole {
        size: 13
        line: 18
        weight: Font.Medium
        color: theme.ink
    }
    readonly property TypeRole strongest: TypeRole {
        size: 13
        line: 20
        weight: Font.DemiBold
        color: theme.ink
    }
    readonly property TypeRole quiet: TypeRole {
        size: 13
        line: 20
        weight: Font.Normal
        color: theme.slate
    }
    readonly property TypeRole caption: TypeRole {
        size: 12
        line: 16
        weight: Font.Normal
        color: theme.slate
    }
    readonly property TypeRole tagLine: TypeRole {
        size: 11
        line: 16
        weight: Font.Normal
        color: theme.slate
        spacing: 1
    }
    readonly property TypeRole keyCap: TypeRole {
        size: 11
        line: 16
        weight: Font.Medium
        color: theme.ink
    }
    readonly property TypeRole largeKeyCap: TypeRole {
        size: 18
        line: 24
        weight: Font.Medium
        color: theme.ink
    }
    readonly property TypeRole strongCaption: TypeRole {
        size: 12
        line: 16
        weight: Font.Medium
        color: theme.ink
    }

    /// A length that belongs to text, on whole points.
    function scaled(length: real): real {
        return Math.round(length * DesktopLook.textScale);
    }

    // Lengths.
    readonly property int cardPadding: 20
    readonly property int cardRadius: 12
    readonly property int rowRadius: 10
    readonly property int controlRadius: 8
    readonly property int capRadius: 5
    readonly property int panePadding: 24
    readonly property int cardSpacing: 16
    readonly property int blockSpacing: 12
    readonly property int symbolSpacing: 8
    readonly property int headingSpacing: 4
    readonly property int capSpacing: 3
    readonly property int greetingHeight: 120
    readonly property int sidebarWidth: Math.max(200, Math.min(theme.scaled(140), 280))
    readonly property int recorderWidth: Math.min(theme.scaled(480), 640)
    readonly property int toolTipWidth: 480
    readonly property int symbolSize: 16
    readonly property int statusSymbolSize: 18
    readonly property int placeholderSize: 36
    readonly property int focusAir: 2
    readonly property int focusLine: 2

    /// How long the pointer rests before a tool tip comes, in milliseconds.
    readonly property int toolTipDelay: 700

    // Motion, in milliseconds.
    readonly property int tintDuration: DesktopLook.reducesMotion ? 0 : 90
    readonly property int switchDuration: DesktopLook.reducesMotion ? 0 : 140
    readonly property int revealDuration: DesktopLook.reducesMotion ? 0 : 160
    readonly property int noticeDuration: DesktopLook.reducesMotion ? 0 : 120
    readonly property int paneDuration: DesktopLook.reducesMotion ? 0 : 100
}
