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
    const QStringList languages = locale.uiLanguages();
    for (QString language : languages) { // the user's, by preference
        const QString file = QStringLiteral("bxwifi_") + language.replace(u'-', u'_');
        for (const QString &folder : folders) {
            if (translator->load(file, folder))
                return QCoreApplication::installTranslator(translator);
        }
        if (QLocale(language).language() == QLocale::English) // which the texts are in
            break;
    }
    delete translator;
    return false;
}
} // namespace BxWifi
