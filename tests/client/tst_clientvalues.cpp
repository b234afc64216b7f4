// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// What the client makes of names, secrets and flags before anything is sent, and of what it prints.

#include "bxwifi/joinplan.h"
#include "bxwifi/ssid.h"
#include "bxwifi/wifinetwork.h"
#include "bxwifi/wiredsettings.h"
#include "bxwifictl/output.h"
#include "records/payload.h"

#include <QTest>

using namespace BxWifi;

namespace
{
// The key of "correct horse battery" on "Lab WPA2", by wpa_passphrase.
const QString key = "e7c35583e8cbd2ff9b932419c3daa1be7047b2545d76b25745cea82d732bc79f";
const QString rawKey = QString(64, 'a');
const QString umlauts = QString::fromUtf8("Gr\u00fc\u00dfe");
const QString printedUmlauts = R"(Gr\xc3\xbc\xc3\x9fe)";

QString textOf(const DaemonCall &call)
{
    const QVariant argument = call.arguments.value(0);
    if (call.isRemoval())
        return "remove|" + argument.toString();
    const auto record = recordOf<BXNetwork>(argument.toByteArray());
    return QStringList{call.method == "connectRequest" ? "direct" : "manual", record.flags,
                       record.ssid, record.password, record.identity}
        .join('|');
}
} // namespace

class ClientValuesTest : public QObject
{
    Q_OBJECT

private slots:
    void ssidsArePrintedEscaped();
    void waysToJoin();
    void impossibleSettingsAreRefused();
    void textsOfQrCodes();
    void wiredMistakesAreRefused();
    void flagsAndFrequenciesInWords();
    void hostileTextNeverReachesTheTerminal();
};

void ClientValuesTest::ssidsArePrintedEscaped()
{
    const std::pair<QString, QString> cases[] = {
        {"Lab WPA2", "Lab WPA2"},
        {printedUmlauts, umlauts},
        {R"(\xe4\xbd\xa0\xe5\xa5\xbd)", QString::fromUtf8("\u4f60\u597d")},
        {R"(Say \"Hi\" \\o/)", R"(Say "Hi" \o/)"},
        {R"(\e[31m\n\r\t\x07)", "\033[31m\n\r\t\a"},
        {R"(\\xc3)", R"(\xc3)"},
        {R"(\xef\xbb\xbfmarked)", QChar(0xfeff) + QString("marked")},
    };
    for (const auto &[printed, ssid] : cases) {
        QCOMPARE(ssidOf(printed), ssid);
        QCOMPARE(printedSsid(ssid), printed);
        // The daemon may have cut the text anywhere.
        for (int length = 0; length < printed.size(); ++length)
            ssidOf(printed.left(length));
    }
}

void ClientValuesTest::waysToJoin()
{
    const std::pair<JoinSettings, QStringList> cases[] = {
        {{"Lab", Security::Open, "", "", false}, {"remove|Lab", "direct||Lab||"}},
        {{"Lab", Security::Open, "", "", true},
         {"remove|Lab", "manual|NONE|Lab||", "direct||Lab||"}},
        {{"Lab WPA2", Security::Wpa, "correct horse battery", "", false},
         {"remove|Lab WPA2", "direct|WPA-PSK|Lab WPA2|" + key + "|"}},
        {{umlauts, Security::Wpa, rawKey, "", false},
         {"remove|" + printedUmlauts, "direct|WPA-PSK|" + umlauts + "|" + rawKey + "|"}},
        {{umlauts, Security::Wpa, "", "", false}, {"direct|WPA-PSK|" + printedUmlauts + "||"}},
        {{umlauts, Security::Wpa, rawKey, "", true},
         {"remove|" + printedUmlauts, "manual|WPA-PSK|" + umlauts + "|" + rawKey.left(63) + "|",
          "direct|WPA-PSK|" + printedUmlauts + "|" + rawKey + "|"}},
        {{"Lab", Security::Wep, "abcde", "", false},
         {"remove|Lab", "manual|WEP|Lab|abcde|", "direct||Lab||"}},
        {{"Lab WPA2", Security::Wpa3, "correct horse battery", "", false},
         {"remove|Lab WPA2", "direct|WPA-PSK|Lab WPA2|" + key + "|", "remove|Lab WPA2",
          "manual|SAE|Lab WPA2|correct horse battery|"}},
        {{"Lab", Security::Enterprise, "lovelace", "ada", false},
         {"remove|Lab", "manual|WPA-EAP|Lab|lovelace|ada"}},
    };
    for (const auto &[settings, calls] : cases) {
        QCOMPARE(settings.problem(), QString());
        QStringList planned;
        for (const DaemonCall &call : joinPlan(settings).calls)
            planned << textOf(call);
        QCOMPARE(planned, calls);
    }
}

void ClientValuesTest::impossibleSettingsAreRefused()
{
    const std::pair<JoinSettings, QString> cases[] = {
        {{"", Security::Open, "", "", false}, "empty"},
        {{QString(17, QChar(0xfc)), Security::Open, "", "", false}, "32 bytes"},
        {{ssidOf(R"(\xff)"), Security::Open, "", "", false}, "UTF-8"},
        {{ssidOf(R"(caf\xe9)"), Security::Open, "", "", false}, "UTF-8"},
        {{"Lab", Security::Wpa, QString(7, 'a'), "", false}, "8 to 63"},
        {{"Lab", Security::Wpa, QString(64, 'x'), "", false}, "8 to 63"},
        {{"Lab", Security::Wpa3, rawKey, "", false}, "passphrase"},
        {{"Lab", Security::Wpa3, "", "", false}, "8 to 63"},
        {{"Lab", Security::Wep, "abcdef", "", false}, "5 or 13"},
        {{"Lab", Security::Enterprise, "lovelace", "", false}, "identity"},
        {{"Lab", Security::Wpa, "two\nlines...", "", false}, "control"},
        {{"Lab", Security::Open, "needless", "", false}, "open"},
        {{"Lab", Security::Unsupported, "", "", false}, "cannot join"},
        {{"Lab", Security::Automatic, "abcdefgh", "", true}, "hidden"},
        {{"Lab", Security::Open, "", "", false, std::chrono::seconds(0)}, "one day"},
        {{"Lab", Security::Open, "", "", false, std::chrono::seconds(86401)}, "one day"},
    };
    for (const auto &[settings, word] : cases)
        QVERIFY2(settings.problem().contains(word), qPrintable(word + ": " + settings.problem()));
}

void ClientValuesTest::textsOfQrCodes()
{
    const std::pair<QString, JoinSettings> cases[] = {
        {"WIFI:T:WPA;S:Lab;P:correct horse;;", {"Lab", Security::Wpa, "correct horse", "", false}},
        {"wifi:P:12345678;Z:x;H:True;S:Lab;T:sae\n", {"Lab", Security::Wpa3, "12345678", "", true}},
        {"WIFI:S:Lab;P:left over;;", {"Lab", Security::Open, "", "", false}},
        {R"(WIFI:T:WEP;S:\"Say\"\; a\,b\:c\\;P:"ab\"";;)",
         {R"("Say"; a,b:c\)", Security::Wep, R"(ab")", "", false}},
        {R"(WIFI:T:WEP;S:"a\";P:6162636465;;)", {R"("a")", Security::Wep, "abcde", "", false}},
        {"WIFI:T:nopass;S:4772c3bcc39f65;;", {umlauts, Security::Open, "", "", false}},
        {"WIFI:T:nopass;S:\"4c6162\";;", {"4c6162", Security::Open, "", "", false}},
        {"WIFI:T:nopass;S:CAFE;;", {"CAFE", Security::Open, "", "", false}},
        {"WIFI:T:WPA2-EAP;S:Lab;E:PEAP;PH2:GTC;A:anyone;I:ada;P:lovelace;;",
         {"Lab", Security::Enterprise, "lovelace", "ada", false}},
        // What is malformed has no name.
        {"http://S:Lab;;", {}},
        {"WIFI:T:nopass;P:S:Lab;;", {}},
        {"WIFI:T:WPA;S:Lab;P:abc\\", {}},
        {"WIFI:T:WPA9;S:Lab;;", {}},
        {"WIFI:T:WEP;S:Lab;P:ff00000000;;", {}},
        {"WIFI:T:WPA2-EAP;S:Lab;E:TTLS;I:ada;P:lovelace;;", {}},
    };
    const auto fields = [](const JoinSettings &read) {
        return std::tuple(read.ssid, read.security, read.secret, read.identity, read.hidden);
    };
    for (const auto &[uri, settings] : cases) {
        QString problem;
        const JoinSettings read = JoinSettings::fromUri(uri, &problem);
        QVERIFY2(fields(read) == fields(settings), qPrintable(uri + ": " + read.toUri()));
        QCOMPARE(problem.isEmpty(), !settings.ssid.isEmpty());
        if (problem.isEmpty())
            QVERIFY(fields(JoinSettings::fromUri(read.toUri(), &problem)) == fields(read));
    }
}

void ClientValuesTest::wiredMistakesAreRefused()
{
    const std::pair<QString, bool> cases[] = {
        {"192.168.1.254 192.168.1.1 255.255.255.0", true},
        {"10.0.0.1 10.0.0.0 255.255.255.254", true},
        {"10.0.0.256 10.0.0.1 255.0.0.0", false},
        {"10.0.2 10.0.0.1 255.0.0.0", false},
        {"010.0.0.2 10.0.0.1 255.0.0.0", false},
        {"10.0.0.2 10.0.0.1x 255.0.0.0", false},
        {"10.0.0.2 10.0.0.1 255.0.255.0", false},
        {"10.0.0.2 10.0.0.1 0.0.0.0", false},
        {"10.0.0.0 10.0.0.1 255.0.0.0", false},
        {"10.0.0.2 10.255.255.255 255.0.0.0", false},
        {"192.168.1.10 192.168.2.1 255.255.255.0", false},
    };
    for (const auto &[text, isRight] : cases) {
        const QStringList values = text.split(' ');
        const WiredSettings settings{values[0], values[1], values[2], "", false};
        QVERIFY2(settings.problem().isEmpty() == isRight, qPrintable(text));
    }
}

void ClientValuesTest::flagsAndFrequenciesInWords()
{
    const std::tuple<QString, Security, QString> flags[] = {
        {"[ESS]", Security::Open, "open"},
        {"[WEP][ESS]", Security::Wep, "WEP"},
        {"[WPA-PSK-TKIP][WPA2-PSK-CCMP][ESS]", Security::Wpa, "WPA/WPA2"},
        {"[WPA2-PSK+SAE-CCMP][SAE-H2E][ESS]", Security::Wpa, "WPA2/WPA3"},
        {"[WPA2-SAE-CCMP][ESS]", Security::Wpa3, "WPA3"},
        {"[WPA2-EAP-CCMP][ESS]", Security::Enterprise, "WPA2 Enterprise"},
        {"[WPA-EAP-TKIP][RSN-EAP+EAP-SHA256-CCMP-preauth]", Security::Enterprise,
         "WPA/WPA2 Enterprise"},
        {"[WPA2-EAP+PSK-CCMP][ESS]", Security::Wpa, "WPA2"},
        {"[WPA2-PSK+FT/PSK-CCMP+TKIP][ESS]", Security::Wpa, "WPA2"},
        {"[WPA-PSK-TKIP]", Security::Wpa, "WPA"},
        {"[OWE-TRANS-OPEN][ESS]", Security::Open, "open"},
        {"[WPS][P2P][ESS]", Security::Open, "open"},
    };
    for (const char *text : {"[WPA2-OWE-CCMP][ESS]", "[OWE-TRANS][ESS]", "[OSEN-OSEN-CCMP]",
                             "[RSN-SAE-CCMP][MESH]", "[IBSS]", "[WPA2-EAP-SHA256-CCMP][ESS]",
                             "[WPA2-EAP-SUITE-B-192-GCMP-256]", "[WPA2-PSK-SHA256-CCMP][ESS]",
                             "[WPA2-FT/PSK-CCMP][ESS]", "[WPA2-SAE-EXT-KEY-GCMP-256][ESS]"}) {
        QVERIFY2(securityOf(text) == Security::Unsupported, text);
        QCOMPARE(securityText(text), "unsupported");
    }
    for (const auto &[text, security, words] : flags) {
        QCOMPARE(securityOf(text), security);
        QCOMPARE(securityText(text), words);
    }
    const std::tuple<int, int, QString, int, int> radio[] = {
        {2412, 1, "2.4 GHz", -30, 4}, {2484, 14, "2.4 GHz", -65, 3}, {5745, 149, "5 GHz", -66, 2},
        {5955, 1, "6 GHz", -85, 1},   {900, 0, "", -86, 0},
    };
    for (const auto &[frequency, channel, band, signal, bars] : radio) {
        const WifiNetwork network{"", "", signal, frequency, ""};
        QCOMPARE(network.channel(), channel);
        QCOMPARE(network.band(), band);
        QCOMPARE(network.bars(), bars);
    }
}

void ClientValuesTest::hostileTextNeverReachesTheTerminal()
{
    const QString harmless = QString::fromUtf8("\u4f60 \"\\\U0001f600");
    const std::pair<QString, QString> cases[] = {
        {"\033]0;owned\a", R"(\u001b]0;owned\u0007)"},
        {QString::fromUtf8("\u009b|\u202e|\u2028"), R"(\u009b|\u202e|\u2028)"},
        {QString::fromUtf8("\U000e0041"), R"(\udb40\udc41)"},
        {QChar(QChar::ByteOrderMark) + harmless, R"(\ufeff)" + harmless},
        {harmless, harmless},
    };
    for (const auto &[text, safe] : cases)
        QCOMPARE(terminalSafe(text), safe);

    setlocale(LC_CTYPE, "C.UTF-8");
    const QString wide = QString::fromUtf8("\u4f60\u597d");
    QCOMPARE(tableOf({{wide, "x"}, {"abcdef", "y"}}), (QStringList{wide + "    x", "abcdef  y"}));
}

QTEST_APPLESS_MAIN(ClientValuesTest)
#include "tst_clientvalues.moc"
