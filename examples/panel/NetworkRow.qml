// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import BxWifi 1.0

ItemDelegate {
    id: row
    objectName: model.ssid
    highlighted: model.joined

    contentItem: RowLayout {
        spacing: 10
        Column {
            Layout.fillWidth: true
            Label {
                width: parent.width
                text: model.ssid
                textFormat: Text.PlainText // names come from strangers
                elide: Text.ElideRight
                font.bold: model.joined
            }
            Label {
                text: model.joined ? "Connected" : model.securityText + (model.known ? ", known" : "")
                font.pixelSize: 11
                opacity: 0.6
            }
        }
        Item { // a lock
            visible: model.security !== BxWifi.Open
            width: 12
            height: 16
            Rectangle {
                x: 2
                width: 8
                height: 12
                radius: 4
                color: "transparent"
                border { width: 2; color: row.palette.text }
            }
            Rectangle {
                y: 7
                width: 12
                height: 9
                radius: 2
                color: row.palette.text
            }
        }
        Row {
            spacing: 2
            Repeater {
                model: 4
                Rectangle {
                    anchors.bottom: parent.bottom
                    width: 4
                    height: 4 + 4 * index
                    color: row.palette.text
                    opacity: index < bars ? 1 : 0.2
                }
            }
        }
    }
    readonly property int bars: model.bars
}
