// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "control/wificontrol.h"

#include <QTest>

class PassphraseTest : public QObject
{
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void noKey();
};

void PassphraseTest::keys_data()
{
    QTest::addColumn<QString>("passphrase");
    QTest::addColumn<QString>("ssid");
    QTest::addColumn<QString>("key");

    // IEEE 802.11i, H.4.3
    QTest::newRow("1") << "password"
                       << "IEEE"
                       << "f42c6fc52df0ebef9ebb4b90b38a5f902e83fe1b135a70e23aed762e9710a12e";
    QTest::newRow("2") << "ThisIsAPassword"
                       << "ThisIsASSID"
                       << "0dc0d6eb90555ed6419756b9a15ec3e3209b63df707dd508d14581f8982721af";
    QTest::newRow("3") << QString(32, 'a') << QString(32, 'Z')
                       << "becb93866bb8c3832cb777c2f559807c8c59afcb6eae734885001300a981cc62";
}

void PassphraseTest::keys()
{
    QFETCH(QString, passphrase);
    QFETCH(QString, ssid);
    WifiControl control(nullptr);
    QTEST(control.hashPassword(passphrase, ssid), "key");
    QTEST(control.hashPasswordVantrel(passphrase, ssid), "key");
}

void PassphraseTest::noKey()
{
    WifiControl control(nullptr);
    QVERIFY(control.hashPasswordVantrel("too few", "IEEE").isEmpty());
    qputenv("PATH", "/nowhere");
    QVERIFY(control.hashPasswordVantrel("password", "IEEE").isEmpty());
}

QTEST_GUILESS_MAIN(PassphraseTest)
#include "tst_passphrase.moc"
