// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15
import BxWifi 1.0

// The networks in sight of a client.
ListView {
    id: list

    required property WifiClient client

    /// Somebody wants this network: touched it, or pressed Space or Enter on it.
    signal chosen(NetworkRow network)
    /// Somebody wants to see what can be done with it: touched it for long, or pressed the menu key.
    signal held(NetworkRow network)

    model: client.networks
    clip: true
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Networks")

    delegate: NetworkRow {
        id: row
        objectName: ssid
        width: ListView.view.width
        onClicked: list.chosen(row)
        onPressAndHold: list.held(row)
        Keys.onMenuPressed: list.held(row)
    }
    move: Transition { NumberAnimation { property: "y"; duration: 200 } }
    ScrollBar.vertical: ScrollBar {}

    Label {
        parent: list
        anchors.centerIn: parent
        visible: list.count === 0 && !list.client.scanning
        text: qsTr("No networks in sight")
        opacity: 0.6
    }
}
