// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15
import BxWifi 1.0

// What can be done with a network that the device has joined.
Menu {
    id: menu

    required property WifiClient client
    property string ssid
    property bool joined

    /// Something could not be done; why, in a sentence.
    signal failed(string text)

    /// Opens for a row of a NetworkList.
    function openFor(network) {
        ssid = network.ssid
        joined = network.joined
        open()
    }
    function follow(reply) {
        reply.finished.connect(function() {
            if (reply.errorText !== "")
                menu.failed(reply.errorText)
        })
    }

    modal: true
    // The styles have one width for all menus, whatever the language needs.
    width: leftPadding + rightPadding + Math.max(implicitWidth, leave.implicitWidth, remove.implicitWidth)

    MenuItem {
        id: leave
        objectName: "disconnect"
        text: qsTr("Disconnect")
        Accessible.name: text
        enabled: menu.joined
        onTriggered: menu.follow(menu.client.disconnectFromNetwork())
    }
    MenuItem {
        id: remove
        objectName: "forget"
        text: qsTr("Forget this network")
        Accessible.name: text
        onTriggered: menu.follow(menu.client.forget(menu.ssid))
    }
}
