import QtQuick

// Cards of which one is selected: one stop for the Tab key, and arrows in between.
FocusScope {
    id: root

    // What a screen reader says.
    required property string label
    required property list<string> titles
    required property int current

    signal chosen(index: int)

    Accessible.role: Accessible.Grouping
    Accessible.name: label

    function step(by: int): void {
        const next = current + by;
        if (next >= 0 && next < titles.length)
            chosen(next);
    }

    Keys.onLeftPressed: step(-1)
    Keys.onUpPressed: step(-1)
    Keys.onRightPressed: step(1)
    Keys.onDownPressed: step(1)
}
