// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "records/bxnetwork.h"
#include "records/bxnetworkconnected.h"
#include "records/bxstatic.h"
#include "records/payload.h"

#include <QTest>

class RecordsTest : public QObject
{
    Q_OBJECT

private slots:
    void encoding_data();
    void encoding();
    void decoding_data();
    void decoding();
};

namespace
{
/// One-letter texts in hexadecimal, as they are encoded one after the other.
QByteArray letters(const QByteArray &text)
{
    QByteArray encoded;
    for (const char letter : text)
        encoded += "00000002" + QByteArray("00") + QByteArray(1, letter).toHex();
    return encoded;
}

/// The texts of a network, "-" for a null one, and its flag.
QString shown(const BXNetwork &network)
{
    QStringList fields;
    for (const QString &text : {network.bssid, network.frequency, network.signalLevel,
                                network.flags, network.ssid, network.password, network.identity})
        fields << (text.isNull() ? "-" : text);
    return fields.join('|') + (network.reservedFlag ? "|true" : "|false");
}
} // namespace

void RecordsTest::encoding_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QByteArray>("expected");

    const BXStatic example{"10.0.0.2", "10.0.0.1", "255.0.0.0", QString(), ""};
    QTest::newRow("70 bytes") << payloadOf(example)
                              << QByteArray("00000010"
                                            "00310030002e0030002e0030002e0032"
                                            "00000010"
                                            "00310030002e0030002e0030002e0031"
                                            "00000012"
                                            "003200350035002e0030002e0030002e0030"
                                            "ffffffff"
                                            "00000000");
    QTest::newRow("static") << payloadOf(BXStatic{"a", "b", "c", "d", "e"}) << letters("abcde");
    QTest::newRow("network") << payloadOf(BXNetwork{"a", "b", "c", "d", "e", "f", "g", true})
                             << letters("abcdefg") + "01";
    QTest::newRow("unfilled") << payloadOf(BXNetwork())
                              << QByteArray("ffffffff").repeated(7) + "00";
    const BXNetworkConnected status{"a", "b", "c", "d", "e", "f", "g", "h", QString()};
    QTest::newRow("connected") << payloadOf(status) << letters("abcdefgh") + "ffffffff";
}

void RecordsTest::encoding()
{
    QFETCH(QByteArray, payload);
    QTEST(payload.toHex(), "expected");
}

void RecordsTest::decoding_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("network");

    QTest::newRow("whole") << letters("abcdefg") + "01"
                           << "a|b|c|d|e|f|g|true";
    QTest::newRow("bytes behind it") << letters("abcdefg") + "00ff"
                                     << "a|b|c|d|e|f|g|false";
    QTest::newRow("nothing") << QByteArray() << "|||||||false";
    QTest::newRow("ends after a text") << letters("abcde") << "a|b|c|d|e|||false";
    QTest::newRow("ends within a text") << QByteArray("00000008"
                                                      "00610062")
                                        << "-|||||||false";
    QTest::newRow("odd length") << "00000003" + letters("bcdefg") << "-|b|c|d|e|f|g|false";
    QTest::newRow("null and empty") << "ffffffff"
                                       "00000000" +
                                           letters("cdefg") + "01"
                                    << "-||c|d|e|f|g|true";
}

void RecordsTest::decoding()
{
    QFETCH(QByteArray, payload);
    QTEST(shown(recordOf<BXNetwork>(QByteArray::fromHex(payload))), "network");
}

QTEST_APPLESS_MAIN(RecordsTest)
#include "tst_records.moc"
