import QtQuick
import Kelpa

/// A time of day in the country's own way of writing it. One of its parts is chosen: the arrow keys change it and
/// move on to the next one, and digits can be typed.
Item {
    id: entry

    /// Since midnight.
    property int minutes: 0
    property string label
    required property var buttons
    /// A person has set another time.
    signal changed()

    readonly property int hour: Math.floor(minutes / 60)
    readonly property int minute: minutes % 60
    readonly property string text: hourText + ClockFormat.separator + minuteText
        + (ClockFormat.twelveHours ? " " + halfText : "")
    readonly property string hourText: {
        const shown = ClockFormat.twelveHours ? (hour + 11) % 12 + 1 : hour;
        return String(shown).padStart(ClockFormat.twelveHours && !ClockFormat.zeroBeforeHour ? 1 : 2, "0");
    }
    readonly property string minuteText: String(minute).padStart(2, "0")
    readonly property string halfText: hour < 12 ? ClockFormat.am : ClockFormat.pm
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
        if (part === "half") {
            typeHalf(key);
            return;
        }
        const most = part === "minute" ? 59 : ClockFormat.twelveHours ? 12 : 23;
        const value = Number(typed + key) <= most ? Number(typed + key) : Number(key);
        typed = Number(typed + key) <= most ? typed + key : key;
        take(value);
        if (typed.length === 2 || value * 10 > most)
            finishPart();
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
    function finishPart() {
        typed = "";
        moveBy(1);
    }

    implicitWidth: row.implicitWidth + 2 * row.x + stepper.width + 6
    implicitHeight: Theme.controlHeight
    activeFocusOnTab: true
    opacity: enabled ? 1 : Theme.disabledOpacity
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
        if (event.text >= "0" && event.text <= "9" || part === "half") {
            type(event.text);
            event.accepted = true;
        } else if (event.text === ClockFormat.separator) {
            choose("minute");
            event.accepted = true;
        }
    }
    onActiveFocusChanged: choose(parts[0])

    FieldBox {
        anchors.fill: parent
        focused: entry.activeFocus
        hovered: hover.hovered
    }
    HoverHandler {
        id: hover
    }
    TextMeasure {
        id: metrics
        font.pixelSize: Theme.bodySize
    }

    component Part: Item {
        id: cell
        property string name
        property string shown
        /// What it must have room for.
        property string widest: "00"
        readonly property bool current: entry.activeFocus && entry.part === name

        width: Math.ceil(metrics.widthOf(widest)) + 6
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
            text: cell.shown
            color: cell.current ? Theme.accentText : Theme.primary
        }
        MouseArea {
            anchors.fill: parent
            onPressed: {
                entry.forceActiveFocus(Qt.MouseFocusReason);
                entry.choose(cell.name);
            }
        }
    }
    component Half: Part {
        name: "half"
        shown: entry.halfText
        widest: metrics.widthOf(ClockFormat.am) > metrics.widthOf(ClockFormat.pm) ? ClockFormat.am
            : ClockFormat.pm
        visible: ClockFormat.twelveHours
    }
    Row {
        id: row
        x: 6

        Half {
            visible: ClockFormat.twelveHours && ClockFormat.halfFirst
        }
        Part {
            name: "hour"
            shown: entry.hourText
        }
        Words {
            anchors.verticalCenter: parent.verticalCenter
            text: ClockFormat.separator
        }
        Part {
            name: "minute"
            shown: entry.minuteText
        }
        Half {
            visible: ClockFormat.twelveHours && !ClockFormat.halfFirst
        }
    }
    Stepper {
        id: stepper
        buttons: entry.buttons
        label: entry.label
        onStepped: direction => {
            entry.forceActiveFocus(Qt.MouseFocusReason);
            entry.step(direction);
        }
    }
}
