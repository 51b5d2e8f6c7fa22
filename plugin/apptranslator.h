// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QTranslator>

class QQmlEngine;

/// A catalogue of the plugin; a class of its own so that it can be told from those of the host.
class AppTranslator : public QTranslator {
    Q_OBJECT
public:
    explicit AppTranslator(QObject *parent = nullptr);
};

/// The directory of the catalogues, a setting of the build.
QString catalogueDirectory();

/// Installs the English catalogue of `directory`, and with precedence over it that of the default
/// locale, for as long as `engine` lives. A missing catalogue is no error: its identifiers fall
/// through.
void installTranslators(QQmlEngine *engine, const QString &directory = catalogueDirectory());
