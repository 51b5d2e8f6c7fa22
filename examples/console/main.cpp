// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
//
// Lists the key stores and what is in them, without QML: QCA alone, with the providers of Trivex.
#include <QCoreApplication>
#include <QtCrypto>

#include <cstdio>

int main(int argc, char **argv)
{
    // An installation to /usr needs none of this: QCA looks there by itself.
    if (qEnvironmentVariableIsEmpty("QCA_PLUGIN_PATH"))
        qputenv("QCA_PLUGIN_PATH", TRIVEX_QCA_PLUGIN_DIR);
    QCoreApplication application(argc, argv);
    QCA::Initializer initializer;

    QCA::KeyStoreManager::start();
    QCA::KeyStoreManager manager;
    manager.waitForBusyFinished(); // the tokens are looked for in the background

    const QStringList stores = manager.keyStores();
    for (const QString &id : stores) {
        QCA::KeyStore store(id, &manager);
        std::printf("%s\n", qPrintable(store.name()));
        const auto entries = store.entryList();
        for (const QCA::KeyStoreEntry &entry : entries) {
            const bool hasKey = entry.type() == QCA::KeyStoreEntry::TypeKeyBundle;
            std::printf("  %s%s\n", qPrintable(entry.name()), hasKey ? ", with its key" : "");
        }
    }
    return 0;
}
