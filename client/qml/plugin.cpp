// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#include <bxwifi/translation.h>
#include <bxwifi/wificlient.h>

#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QVariantMap>

/// The codes that phones show and scan, for QML.
class JoinCode : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// The fields of the JoinSettings that a text stands for, or why it is malformed as `problem`.
    Q_INVOKABLE QVariantMap read(const QString &uri) const
    {
        QString problem;
        auto settings = BxWifi::JoinSettings::fromUri(uri, &problem);
        // Codes of WPA3 networks say WPA too, so that all phones read them.
        if (settings.security == BxWifi::Security::Wpa && !settings.hidden &&
            !settings.secret.isEmpty())
            settings.security = BxWifi::Security::Automatic;
        return {{QStringLiteral("ssid"), settings.ssid},
                {QStringLiteral("security"), QVariant::fromValue(settings.security)},
                {QStringLiteral("secret"), settings.secret},
                {QStringLiteral("identity"), settings.identity},
                {QStringLiteral("hidden"), settings.hidden},
                {QStringLiteral("problem"), problem}};
    }
};

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
        qmlRegisterSingletonType<JoinCode>(uri, 1, 0, "JoinCode",
                                           [](QQmlEngine *, QJSEngine *) { return new JoinCode; });
        qmlRegisterUncreatableMetaObject(BxWifi::staticMetaObject, uri, 1, 0, "Security",
                                         QStringLiteral("It is an enumeration"));
    }

    void initializeEngine(QQmlEngine *, const char *) override
    {
        BxWifi::installTranslation(QLocale()); // of the texts of BxWifi.Controls as well
    }
};

#include "plugin.moc"
