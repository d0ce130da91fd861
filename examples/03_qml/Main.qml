// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

import QtQuick

Window {
    id: window
    required property var catalogue
    required property var watched

    width: 720; height: 480; visible: true
    title: qsTr("A robot's memory")

    // The text of an item that a view made, empty when it made none.
    function itemText(item) { return item ? item.text : "" }
    function firstCatalogueText() { return itemText(catalogueView.itemAtIndex(0)) }
    function firstWatchedTexts() {
        return [2, 5].map(column => itemText(watchView.itemAtCell(Qt.point(column, 0))))
    }

    ListView {
        id: catalogueView
        width: 240; height: parent.height; clip: true
        model: window.catalogue
        delegate: Text {
            required property string name
            required property string natureText
            width: ListView.view.width; padding: 4
            text: name + " (" + natureText + ")"
        }
    }
    TableView {
        id: watchView
        x: 250; width: parent.width - x; height: parent.height; clip: true
        model: window.watched
        delegate: Text {
            required property var display
            required property color keyColor
            required property int column
            padding: 4
            text: display ?? ""
            color: column === 2 ? keyColor : "black"
        }
    }
}
