// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// What QML does not see of the library.

#include <bxwifi/wificlient.h>

#include <QTest>

#include <utility>

using namespace BxWifi;
using namespace std::chrono_literals;

class ClientTest : public QObject
{
    Q_OBJECT

private slots:
    void textsOfQrCodes();
    void impossibleSettings();
};

void ClientTest::textsOfQrCodes()
{
    const std::pair<const char *, const char *> cases[] = {
        {"WIFI:T:WPA;S:Lab;P:correct horse;;", "WIFI:T:WPA;S:Lab;P:correct horse;;"},
        {"wifi:;P:12345678;Z:x;H:True;S:Lab;T:sae\n", "WIFI:T:SAE;S:Lab;P:12345678;H:true;;"},
        {"WIFI:S:Lab;P:left over;;", "WIFI:T:nopass;S:Lab;;"},
        {R"(WIFI:T:WEP;S:\"Say\"\; a\,b\:c\\;P:"ab\"cd";;)",
         R"(WIFI:T:WEP;S:\"Say\"\; a\,b\:c\\;P:ab\"cd;;)"},
        {R"(WIFI:T:WEP;S:"a\";P:6162636465;;)", R"(WIFI:T:WEP;S:\"a\";P:abcde;;)"},
        {"WIFI:T:nopass;S:4772c3bcc39f65;;", "WIFI:T:nopass;S:Gr\u00fc\u00dfe;;"},
        {"WIFI:S:\"4c6162\";;", "WIFI:T:nopass;S:\"4c6162\";;"},
        {"WIFI:S:CAFE;;", "WIFI:T:nopass;S:\"CAFE\";;"},
        {"WIFI:T:WPA2-EAP;S:Lab;E:PEAP;PH2:GTC;A:anyone;I:ada;P:lovelace;;",
         "WIFI:T:WPA2-EAP;S:Lab;E:PEAP;PH2:MSCHAPV2;I:ada;P:lovelace;;"},
    };
    for (const auto &[uri, plain] : cases) {
        for (const char *text : {uri, plain}) {
            QString problem;
            const JoinSettings read = JoinSettings::fromUri(QString::fromUtf8(text), &problem);
            QCOMPARE(problem + read.problem() + read.toUri(), QString::fromUtf8(plain));
        }
    }
}

/// Those that a command line or a network in sight does not lead to.
void ClientTest::impossibleSettings()
{
    const std::pair<JoinSettings, QString> cases[] = {
        {{"Lab", Security::Wpa, QString(63, 'a'), "", false, 24h}, ""},
        {{"Lab", Security::Open, "", "", false, 1s}, ""},
        {{"Lab", Security::Enterprise, "lovelace", "", false}, "identity"},
        {{"Lab", Security::Enterprise, "", "ada", false}, "password"},
        {{"Lab", Security::Automatic, "abcdefgh", "", true}, "hidden"},
        {{QString(QChar::Null), Security::Open, "", "", false}, "name"},
        {{"Lab", Security::Open, "", "", false, 0s}, "one day"},
        {{"Lab", Security::Open, "", "", false, 86401s}, "one day"},
    };
    for (const auto &[settings, word] : cases)
        QVERIFY(word.isEmpty() ? settings.problem().isEmpty() : settings.problem().contains(word));
}

QTEST_GUILESS_MAIN(ClientTest)
#include "tst_client.moc"
