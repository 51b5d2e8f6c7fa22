// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
//
// Imports all modules, from where the build was told that they are, and prints what shows that
// catalogues and providers were found.
#include <QGuiApplication>
#include <QLocale>
#include <QQmlComponent>
#include <QQmlEngine>

#include <cstdio>
#include <memory>

namespace {

const char *const Page = R"(
import QtQml 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0

QtObject {
    property var certificate: CertificateInfoModel {}
    property var request: CertificateRequest { keyStoreModel: KeyStoreModel }
    readonly property string field: qsTrId("trivex-p-la-issuer")
    readonly property string control: qsTrId("trivex-app-cancel")
    readonly property bool hasLocation: KeyStoreModel.certLocation !== null
    property int algorithms: 0
    Component.onCompleted: {
        request.init();
        algorithms = request.prKeyAlgorithm.rowCount();
    }
}
)";

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QLocale::setDefault(QLocale(QStringLiteral("ru_RU")));
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(TRIVEX_QML_IMPORT_DIR));
    QQmlComponent component(&engine);
    component.setData(Page, QUrl(QStringLiteral("page.qml")));
    const std::unique_ptr<QObject> page(component.create());
    if (!page) {
        std::fprintf(stderr, "%s\n", qPrintable(component.errorString()));
        return 1;
    }
    std::printf("field=%s\ncontrol=%s\n", qUtf8Printable(page->property("field").toString()),
                qUtf8Printable(page->property("control").toString()));
    std::printf("algorithms=%d\n", page->property("algorithms").toInt());
    return page->property("hasLocation").toBool() ? 0 : 1;
}
