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

/// Replies, events and tools' output.
void texts(const QString &text)
{
    const QVector<BXNetwork> networks = scanTable(text);
    for (const BXNetwork &network : networks)
        requirePiece(network.bssid + network.frequency + network.signalLevel + network.flags +
                         network.ssid,
                     "\t\n");
    // The first line is the SSID that is looked for.
    requirePiece(networkIdOf(text, text.section(QLatin1Char('\n'), 0, 0)).value_or(QString()),
                 "\t\n");

    isAssociationCompleted(text);
    requirePiece(currentSsid(text) + currentAddress(text), "\n");
    const BXNetworkConnected status = fullStatus(text);
    requirePiece(status.bssid + status.frequency + status.ssid + status.mode +
                     status.pairwiseCipher + status.groupCipher + status.keyMgmt + status.wpaState +
                     status.ipAddress,
                 "=\n");

    eventOf(text);
    isWrongKey(text);
    requirePiece(removedBssidOf(text), " ");

    BXStatic addressing;
    readInterfaceAddress(text, addressing);
    readDefaultGateway(text, addressing);
    requirePiece(addressing.ipAddress + addressing.netmask, ": \n");
    requirePiece(addressing.gateway, " \n");
    requirePiece(bootValueOf(text), "=");
    requirePiece(printedPskOf(text), "=\n");
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
    if (input.startsWith('\0')) {
        records(input);
    } else {
        texts(textOf(input));
        codes(input);
    }
    return 0;
}
