// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "controls/desktop.h"

#include "controls/dialogkeys.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QQuickStyle>
#include <QUrl>

namespace Trivex {

Desktop::Desktop(QObject *parent)
    : QObject(parent)
{
    new DialogKeys(this);
}

QString Desktop::fixedFamily() const
{
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

bool Desktop::hasWidgets() const
{
    // By name: a host without widgets need not load their library.
    return QCoreApplication::instance()->inherits("QApplication");
}

bool Desktop::hasOwnStyle() const
{
    return QString(QQuickStyle::path() + QQuickStyle::name())
        .endsWith(QLatin1String("Trivex/Crypto/Controls/Style"));
}

void Desktop::copy(const QString &text) const
{
    QGuiApplication::clipboard()->setText(text);
}

bool Desktop::openFile(const QString &path) const
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool Desktop::openFolder(const QString &path) const
{
    const QFileInfo info(path);
    return QDesktopServices::openUrl(
        QUrl::fromLocalFile(info.isDir() ? info.absoluteFilePath() : info.absolutePath()));
}

} // namespace Trivex
