// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include <bxwifi/translation.h>
#include <bxwifi/wificlient.h>

#include <QQmlEngine>
#include <QQmlExtensionPlugin>

/// What `import BxWifi 1.0` brings: the classes of the client library under their own names. Its
/// structures are values with properties and need no name.
class BxWifiPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char *uri) override
    {
        const QString byClient = QStringLiteral("A WifiClient makes it");
        qmlRegisterType<BxWifi::WifiClient>(uri, 1, 0, "WifiClient");
        qmlRegisterUncreatableType<BxWifi::WifiReply>(uri, 1, 0, "WifiReply", byClient);
        qmlRegisterUncreatableType<BxWifi::NetworkModel>(uri, 1, 0, "NetworkModel", byClient);
        qmlRegisterUncreatableMetaObject(BxWifi::staticMetaObject, uri, 1, 0, "Security",
                                         QStringLiteral("It is an enumeration"));
    }

    void initializeEngine(QQmlEngine *, const char *) override
    {
        BxWifi::installTranslation(QLocale()); // of the texts of BxWifi.Controls as well
    }
};

#include "plugin.moc"
