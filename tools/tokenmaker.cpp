// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/tokenmaker.h"

#include "qca/base/securedtext.h"
#include "tools/tokenadmin.h"

#include <QPointer>

namespace Trivex {

namespace {

// SoftHSM's own; there is no token yet that could be asked.
constexpr int ShortestPin = 4;
constexpr int LongestPin = 255;

} // namespace

TokenMaker::TokenMaker(QObject *parent)
    : QObject(parent)
{
    connect(&TokenMakers::instance(), &TokenMakers::changed, this, [this] {
        const bool isAvailable = TokenMakers::instance().isOffered();
        if (std::exchange(m_isAvailable, isAvailable) != isAvailable)
            Q_EMIT availableChanged();
    });
    // Last: an offer from another thread is either seen here or told of.
    m_isAvailable = TokenMakers::instance().isOffered();
}

TokenMaker::~TokenMaker()
{
    m_arrival->close();
}

bool TokenMaker::isAvailable() const
{
    return m_isAvailable;
}

bool TokenMaker::isRunning() const
{
    return m_isRunning;
}

int TokenMaker::error() const
{
    return TokenAdmin::errorOf(m_error.kind);
}

QString TokenMaker::message() const
{
    return TokenAdmin::messageOf(m_error, false);
}

QString TokenMaker::name() const
{
    return m_name;
}

QString TokenMaker::lengthText() const
{
    return qtTrId("trivex-app-admin-length")
        .arg(QString::number(ShortestPin), QString::number(LongestPin));
}

bool TokenMaker::fits(const QString &pin)
{
    const int length = pin.toUtf8().size();
    return length >= ShortestPin && length <= LongestPin;
}

bool TokenMaker::isName(const QString &name)
{
    return TokenAdmin::isName(name);
}

void TokenMaker::make(const QString &name, const QString &pin)
{
    if (m_isRunning)
        return;
    m_isRunning = true;
    m_asked = name;
    Q_EMIT runningChanged();
    TokenMaking making;
    making.name = name;
    making.pin = Secret(securedText(pin.toUtf8()));
    const auto arrive = [this, arrival = m_arrival](const TokenError &error) {
        arrival->post([this, error] { end(error); });
    };
    if (TokenMakers::instance().start(std::move(making), arrive))
        return;
    TokenError none;
    none.kind = TokenError::TokenRemoved;
    arrive(none);
}

void TokenMaker::end(const TokenError &error)
{
    m_error = error;
    m_isRunning = false;
    if (error.kind == TokenError::NoError)
        m_name = m_asked;
    const QPointer<TokenMaker> self(this);
    Q_EMIT runningChanged();
    if (self)
        Q_EMIT finished();
}

} // namespace Trivex
