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
    for (; *separators; ++separators)
        require(!text.contains(QLatin1Char(*separators)));
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

/// Replies, events and tools' output.
void texts(const QString &text)
{
    for (const BXNetwork &row : scanTable(text))
        requirePiece(row.bssid + row.frequency + row.signalLevel + row.flags + row.ssid, "\t\n");
    // The first line is the SSID that is looked for.
    requirePiece(networkIdOf(text, linesOf(text)[0]).value_or(QString()), "\t\n");

    isAssociationCompleted(text);
    requirePiece(currentSsid(text) + currentAddress(text), "\n");
    const BXNetworkConnected status = fullStatus(text);
    requirePiece(status.bssid + status.ssid + status.pairwiseCipher + status.ipAddress, "=\n");

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
void codes(const QString &text)
{
    QString problem;
    const auto read = BxWifi::JoinSettings::fromUri(text, &problem);
    require(problem.isEmpty() || read.ssid.isEmpty());
    if (!problem.isEmpty())
        return;
    const auto again = BxWifi::JoinSettings::fromUri(read.toUri(), &problem);
    require(again.ssid == read.ssid && again.secret == read.secret &&
            again.identity == read.identity && again.security == read.security);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, size_t size)
{
    const QByteArray input(data, static_cast<int>(size));
    // A text ends at its first zero byte; a record begins with one, the highest of a length.
    if (input.startsWith('\0')) {
        decode<BXNetwork>(input);
        decode<BXNetworkConnected>(input);
        decode<BXStatic>(input);
    } else {
        texts(textOf(input));
        codes(QString::fromUtf8(input));
    }
    return 0;
}
