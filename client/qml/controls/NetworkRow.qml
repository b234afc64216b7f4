// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import BxWifi 1.0

// One network of a NetworkModel: its name, what is known of it, a lock, and its signal.
ItemDelegate {
    id: row

    // Roles of the model
    required property string ssid
    required property int security
    required property string securityText
    required property int bars
    required property bool joined
    required property bool known
    required property bool ambiguous

    readonly property string protection: ambiguous ? qsTr("several kinds of protection")
                                                   : securityText
    readonly property string details: {
        if (joined)
            return qsTr("Connected")
        //: below the name of a network: its protection, e.g. "WPA2"; the device has joined it before
        return known ? qsTr("%1, known").arg(protection) : protection
    }

    highlighted: joined
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Accessible.role: Accessible.ListItem
    Accessible.name: ssid
    //: what a screen reader says of a network: its protection or "Connected", then its signal
    Accessible.description: qsTr("%1, signal %2 of 4").arg(details).arg(bars)
    Accessible.selectable: true
    Accessible.selected: joined
    Accessible.onPressAction: clicked()

    contentItem: RowLayout {
        spacing: 10
        Column {
            Layout.fillWidth: true
            Label {
                id: name
                width: parent.width
                text: row.ssid
                textFormat: Text.PlainText // names come from strangers
                maximumLineCount: 1
                elide: Text.ElideRight
                font.bold: row.joined
                Accessible.ignored: true
            }
            Label {
                width: parent.width
                text: row.details
                elide: Text.ElideRight
                font.pixelSize: Math.round(name.font.pixelSize * 0.75)
                opacity: 0.6
                Accessible.ignored: true
            }
        }
        LockIcon {
            visible: row.security !== Security.Open || row.ambiguous
            color: name.color
        }
        SignalBars {
            bars: row.bars
            color: name.color
        }
    }
}
