// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15

ApplicationWindow {
    width: 400
    height: 560
    visible: true
    title: "Network"

    header: TabBar {
        id: tabs
        TabButton { text: "Wi-Fi"; objectName: "wirelessTab" }
        TabButton { text: "Wired"; objectName: "wiredTab" }
    }

    WirelessPage {
        anchors.fill: parent
        visible: tabs.currentIndex === 0
    }
    WiredPage {
        anchors.fill: parent
        visible: tabs.currentIndex === 1
        onVisibleChanged: if (visible) load()
    }
}
