// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

// Whatever comes from outside must be read without harm, and what is read must hold to its shape.

#include "bxwifi/joinsettings.h"
#include "control/event.h"
#include "control/passphrase.h"
#include "daemon/supplicantreply.h"
#include "daemon/tooloutput.h"
#include "records/payload.h"
#include "support/text.h"

#include <cstdlib>

namespace
{
void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// None of the separators that a text was split at is left in it.
void requirePiece(const QString &text, const char *separators)
{
    for (const char *separator = separators; *separator; ++separator)
        require(!text.contains(QLatin1Char(*separator)));
}

/// What was decoded encodes to something that decodes to the same, and is no larger than what came
/// with the fields that it did not reach.
template<typename Record>
void decode(const QByteArray &input)
{
    const QByteArray payload = payloadOf(recordOf<Record>(input));
    require(payload.size() <= input.size() + payloadOf(Record()).size());
    require(payloadOf(recordOf<Record>(payload)) == payload);
}

void records(const QByteArray &input)
{
    decode<BXNetwork>(input);
    decode<BXNetworkConnected>(input);
    decode<BXStatic>(input);
}

void scan(const QByteArray &input)
{
    const QString reply = textOf(input);
    const QVector<BXNetwork> networks = scanTable(reply);
    require(networks.size() <= reply.count(QLatin1Char('\n')));
    for (const BXNetwork &network : networks) {
        requirePiece(network.bssid + network.frequency + network.signalLevel + network.flags +
                         network.ssid,
                     "\t\n");
        require(network.password.isNull() && network.identity.isNull());
    }
}

void networks(const QByteArray &input)
{
    // The first line is the SSID that is looked for.
    const QString ssid = textOf(input.left(input.indexOf('\n')));
    const QString reply = textOf(input);
    const std::optional<QString> id = networkIdOf(reply, ssid);
    if (!id)
        return;
    requirePiece(*id, "\t\n");
    require(reply.contains(QLatin1Char('\n') + *id + QLatin1Char('\t') + ssid + QLatin1Char('\t')));
}

void status(const QByteArray &input)
{
    const QString reply = textOf(input);
    if (isAssociationCompleted(reply))
        require(reply.contains(QLatin1String("wpa_state=")));
    requirePiece(currentSsid(reply) + currentAddress(reply), "\n");
    if (!currentAddress(reply).isEmpty())
        require(reply.contains(QLatin1String("ip_address=")));
    const BXNetworkConnected all = fullStatus(reply);
    requirePiece(all.bssid + all.frequency + all.ssid + all.mode + all.pairwiseCipher +
                     all.groupCipher + all.keyMgmt + all.wpaState + all.ipAddress,
                 "=\n");
}

void events(const QByteArray &input)
{
    const QString message = textOf(input);
    eventOf(message);
    isWrongKey(message);
    requirePiece(removedBssidOf(message), " ");
}

void tools(const QByteArray &input)
{
    const QString output = textOf(input);
    BXStatic addressing;
    readInterfaceAddress(output, addressing);
    readDefaultGateway(output, addressing);
    requirePiece(addressing.ipAddress + addressing.netmask, ": \n");
    requirePiece(addressing.gateway, " \n");
    requirePiece(bootValueOf(output), "=");
    requirePiece(printedPskOf(output), "=\n");
}

/// What was read from a code makes a code from which the same is read.
void codes(const QByteArray &input)
{
    QString problem;
    const auto read = BxWifi::JoinSettings::fromUri(QString::fromUtf8(input), &problem);
    require(problem.isEmpty() || read.ssid.isEmpty());
    if (!problem.isEmpty())
        return;
    const auto again = BxWifi::JoinSettings::fromUri(read.toUri(), &problem);
    require(again.ssid == read.ssid && again.secret == read.secret);
    require(again.identity == read.identity && again.security == read.security);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, size_t size)
{
    const QByteArray input(data, static_cast<int>(size));
    // A text ends at its first zero byte; a record begins with one, the highest of a length.
    if (input.startsWith('\0'))
        records(input);
    else
        for (const auto read : {scan, networks, status, events, tools, codes})
            read(input);
    return 0;
}
