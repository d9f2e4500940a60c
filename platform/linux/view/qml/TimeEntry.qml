import QtQuick
import Kelpa

/// A time of day in the country's own way of writing it. One of its parts is chosen: the arrow keys change it and
/// move on to the next one, and digits can be typed.
Item {
    id: entry

    /// Since midnight.
    property int minutes: 0
    required property PreferencesRow row
    property string label: row.label
    /// A person has set another time.
    signal changed()

    readonly property int hour: Math.floor(minutes / 60)
    readonly property int minute: minutes % 60
    readonly property string text: shown.hour + ClockFormat.separator + shown.minute
        + (ClockFormat.twelveHours ? " " + shown.half : "")
    /// What each part is written as.
    readonly property var shown: ({
        hour: String(ClockFormat.twelveHours ? (hour + 11) % 12 + 1 : hour)
            .padStart(ClockFormat.twelveHours && !ClockFormat.zeroBeforeHour ? 1 : 2, "0"),
        minute: String(minute).padStart(2, "0"),
        half: hour < 12 ? ClockFormat.am : ClockFormat.pm
    })
    /// The parts from left to right.
    readonly property var parts: !ClockFormat.twelveHours ? ["hour", "minute"]
        : ClockFormat.halfFirst ? ["half", "hour", "minute"] : ["hour", "minute", "half"]
    property string part: "hour"
    /// The digits that were typed into the part.
    property string typed: ""

    function choose(name: string) {
        part = name;
        typed = "";
    }
    function moveBy(places: int) {
        const at = parts.indexOf(part) + places;
        if (at >= 0 && at < parts.length)
            choose(parts[at]);
    }
    function set(newHour: int, newMinute: int) {
        const time = 60 * newHour + newMinute;
        if (time === minutes)
            return;
        minutes = time;
        changed();
    }
    function step(direction: int) {
        typed = "";
        if (part === "hour")
            set((hour + direction + 24) % 24, minute);
        else if (part === "minute")
            set(hour, (minute + direction + 60) % 60);
        else
            setHalf(hour < 12);
    }
    function setHalf(afternoon: bool) {
        set(hour % 12 + (afternoon ? 12 : 0), minute);
    }
    function type(key: string) {
        if (part === "half")
            return typeHalf(key);
        const most = part === "minute" ? 59 : ClockFormat.twelveHours ? 12 : 23;
        typed = Number(typed + key) <= most ? typed + key : key;
        take(Number(typed));
        if (typed.length === 2 || Number(typed) * 10 > most) {
            typed = "";
            moveBy(1);
        }
    }
    /// A 12 is the first hour of its half of the day, and a 0 is not one yet.
    function take(value: int) {
        if (part === "minute")
            set(hour, value);
        else if (!ClockFormat.twelveHours)
            set(value, minute);
        else if (value > 0)
            set(value % 12 + (hour < 12 ? 0 : 12), minute);
    }
    function typeHalf(key: string) {
        if (ClockFormat.am.toLowerCase().startsWith(key.toLowerCase()))
            setHalf(false);
        else if (ClockFormat.pm.toLowerCase().startsWith(key.toLowerCase()))
            setHalf(true);
    }

    implicitWidth: places.implicitWidth + 2 * places.x + stepper.width + 6
    implicitHeight: Theme.controlHeight
    activeFocusOnTab: true
    Accessible.role: Accessible.EditableText
    Accessible.name: label
    Accessible.focusable: true
    Keys.onUpPressed: step(1)
    Keys.onDownPressed: step(-1)
    Keys.onLeftPressed: moveBy(-1)
    Keys.onRightPressed: moveBy(1)
    Keys.onPressed: event => {
        const wordKey = event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier);
        if (wordKey || event.text === "" || event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab)
            return;
        const typing = event.text >= "0" && event.text <= "9" || part === "half";
        event.accepted = typing || event.text === ClockFormat.separator;
        if (typing)
            type(event.text);
        else if (event.accepted)
            choose("minute");
    }
    onActiveFocusChanged: choose(parts[0])

    TextEntry.Box {
        anchors.fill: parent
        focused: entry.activeFocus
        hovered: hover.hovered
    }
    HoverHandler {
        id: hover
    }

    Row {
        id: places
        x: 6

        Repeater {
            model: entry.parts

            Row {
                id: cell
                required property string modelData
                readonly property bool current: entry.activeFocus && entry.part === modelData
                /// What the part must have room for.
                readonly property var widest: modelData === "half" ? [ClockFormat.am, ClockFormat.pm] : ["00"]

                Words {
                    visible: cell.modelData === "minute"
                    anchors.verticalCenter: parent.verticalCenter
                    text: ClockFormat.separator
                }
                Item {
                    width: Math.ceil(Theme.widest(Theme.bodyMetrics, cell.widest)) + 6
                    height: entry.height

                    RoundedBox {
                        anchors.centerIn: parent
                        width: parent.width
                        height: 20
                        radius: 4
                        color: cell.current ? Theme.accent : "transparent"
                    }
                    Words {
                        // An hour of one digit stands close to its minutes.
                        anchors.right: parent.right
                        anchors.rightMargin: 3
                        anchors.verticalCenter: parent.verticalCenter
                        text: entry.shown[cell.modelData]
                        color: cell.current ? Theme.accentText : Theme.primary
                    }
                    MouseArea {
                        anchors.fill: parent
                        onPressed: {
                            entry.forceActiveFocus(Qt.MouseFocusReason);
                            entry.choose(cell.modelData);
                        }
                    }
                }
            }
        }
    }
    Stepper {
        id: stepper
        row: entry.row
        label: entry.label
        onStepped: direction => {
            entry.forceActiveFocus(Qt.MouseFocusReason);
            entry.step(direction);
        }
    }
}
