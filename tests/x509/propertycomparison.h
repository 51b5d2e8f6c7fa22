// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariantMap>
#include <QtCrypto>

/// All properties of the QML type for a certificate, by name.
QVariantMap propertiesOf(const QCA::Certificate &certificate);

/// A value as it is compared.
QString describedProperty(const QVariant &value);

/// The lines on which the two differ; empty when they agree in every property.
QString propertyDifference(const QVariantMap &actual, const QVariantMap &expected);
