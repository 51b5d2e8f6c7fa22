// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/gost/gostprovider.h"

#include <QObject>
#include <QtCrypto>

/// The Qt plugin through which QCA finds the provider.
class GostPlugin : public QObject, public QCAPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.affinix.qca.Plugin/1.0")
    Q_INTERFACES(QCAPlugin)
public:
    QCA::Provider *createProvider() override { return new Trivex::GostProvider; }
};

#include "gostplugin.moc"
