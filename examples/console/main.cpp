// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// Lists the networks in sight; with a name and a passphrase, joins that network.

#include <bxwifi/wificlient.h>

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTextStream>

using namespace BxWifi;

/// Names of networks come from strangers, and a terminal obeys what is in them.
static QString printable(QString text)
{
    static const QRegularExpression unprintable(QStringLiteral("[\\p{C}\\p{Zl}\\p{Zp}]"));
    return text.replace(unprintable, QString(QChar::ReplacementCharacter));
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream out(stdout);
    WifiClient client;

    const auto join = [&] {
        AddressReply *reply = client.connectTo(arguments.value(1), arguments.value(2));
        QObject::connect(reply, &WifiReply::finished, [&out, reply] {
            if (reply->error())
                out << "Not joined: " << printable(reply->errorText()) << Qt::endl;
            else
                out << "Joined with the address " << reply->value() << Qt::endl;
            QCoreApplication::exit(reply->error());
        });
    };

    ScanReply *reply = client.scan();
    QObject::connect(reply, &WifiReply::finished, [&, reply] {
        if (reply->error())
            out << printable(reply->errorText()) << Qt::endl;
        const auto networks = strongestByName(reply->value());
        for (const WifiNetwork &network : networks)
            out << network.signal << " dBm  " << printable(network.ssid) << Qt::endl;
        if (reply->error() || arguments.size() < 2)
            QCoreApplication::exit(reply->error());
        else
            join();
    });
    return QCoreApplication::exec();
}
