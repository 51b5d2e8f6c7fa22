// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/eventhandler.h"

#include "qca/questions/asker.h"
#include "qca/questions/openquestions.h"

namespace Trivex {

EventHandler::EventHandler(QObject *parent)
    : QCA::EventHandler(parent)
{
    // Connected first, so that a slot that answers at once finds the question noted.
    connect(this, &QCA::EventHandler::eventReady, this, [this](int id, const QCA::Event &event) {
        const auto info = questionInfo(event);
        if (info && info->kind != PasswordQuestion)
            m_tickets.insert(id, info->ticket);
    });
}

EventHandler::~EventHandler() = default;

void EventHandler::submitKeyStoreId(int id, const QString &keyStoreId)
{
    submitText(id, keyStoreId);
}

void EventHandler::submitKeyStoreEntryName(int id, const QString &name)
{
    submitText(id, name);
}

void EventHandler::submitText(int id, const QString &text)
{
    if (const quintptr ticket = m_tickets.take(id)) {
        noteTextAnswer(ticket, text);
        submitPassword(id, QCA::SecureArray());
    }
}

void EventHandler::submitTypedPin(int id, const QCA::Event &event, const QCA::SecureArray &pin)
{
    if (const auto info = questionInfo(event))
        noteAsksAgain(info->ticket);
    submitPassword(id, pin);
}

bool EventHandler::isForAnother(const QCA::Event &event) const
{
    const auto info = questionInfo(event);
    if (!info)
        return false;
    return info->withdrawn || (info->addressee && info->addressee != this);
}

} // namespace Trivex
