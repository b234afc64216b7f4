// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include "translation.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <QTranslator>

namespace BxWifi
{
bool installTranslation(const QLocale &locale)
{
    const auto objectName = QStringLiteral("bxwifi translator");
    delete qApp->findChild<QTranslator *>(objectName);
    if (locale.language() == QLocale::C) // for which the environment's LANGUAGE does not count
        return false;
    const QStringList folders = QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                          QStringLiteral("bxwifi/translations"),
                                                          QStandardPaths::LocateDirectory);
    auto *translator = new QTranslator(qApp);
    translator->setObjectName(objectName);
    for (const QString &folder : folders) {
        if (translator->load(locale, QStringLiteral("bxwifi"), QStringLiteral("_"), folder))
            return QCoreApplication::installTranslator(translator);
    }
    delete translator;
    return false;
}
} // namespace BxWifi
