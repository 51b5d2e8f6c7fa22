// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/qcahandler.h"
#include "qca/questions/openquestions.h"

#include <QDebug>

#include <utility>

namespace {

bool unanswered(const char *reason)
{
    qWarning() << reason;
    return false;
}

} // namespace

QcaHandler::QcaHandler(QObject *parent)
    : QObject(parent)
    , m_eventHandler(nullptr)
{
}

void QcaHandler::setKeyStoreId(const QString &id)
{
    m_stored.setKeyStoreId(id);
}

void QcaHandler::setObjectId(const QString &id)
{
    m_stored.setObjectId(id);
}

void QcaHandler::setPassword(const QCA::SecureArray &password)
{
    m_stored.setPassword(password);
}

void QcaHandler::rejectPending()
{
    // On the handler's own thread, because the stock event handler keeps its open questions
    // without a lock. A direct call where the caller is on that thread.
    QMetaObject::invokeMethod(this, [this] {
        if (m_rejected)
            return;
        m_eventHandler.reject(m_id);
        m_rejected = true;
        m_unanswered.remove(m_id);
    });
}

void QcaHandler::rejectUnanswered()
{
    QMetaObject::invokeMethod(this, [this] {
        m_rejectsUnanswered = true;
        const QSet<int> open = std::exchange(m_unanswered, {});
        for (const int id : open)
            m_eventHandler.reject(id);
    });
}

void QcaHandler::start()
{
    connect(&m_eventHandler, &QCA::EventHandler::eventReady, this, &QcaHandler::qcaEventReady);
    m_stored.registerSet();
    m_eventHandler.start();
}

void QcaHandler::qcaEventReady(int id, QCA::Event event)
{
    if (event.isNull()) {
        qWarning() << "Event is null";
        m_stored.clear();
        return;
    }
    const auto own = Trivex::questionInfo(event);
    if (own && own->kind == Trivex::PasswordQuestion) {
        // Its operation has taken what was stored for it; what is stored now belongs to another.
        m_eventHandler.reject(id);
        return;
    }
    m_id = id;
    m_rejected = false;
    if (!answer(event))
        leaveOpen();
    m_stored.clear();
}

void QcaHandler::leaveOpen()
{
    if (m_rejectsUnanswered)
        m_eventHandler.reject(m_id);
    else
        m_unanswered.insert(m_id);
}

bool QcaHandler::answer(const QCA::Event &event)
{
    if (event.source() != QCA::Event::KeyStore && event.source() != QCA::Event::Data)
        return unanswered("Unexpected Source for Event!");
    switch (Trivex::questionKind(event)) {
    case Trivex::PasswordQuestion:
        return answerPassword();
    case Trivex::KeyStoreIdQuestion:
        return answerKeyStoreId();
    case Trivex::EntryNameQuestion:
        return answerObjectId();
    default:
        return unanswered("Unexpected event type");
    }
}

bool QcaHandler::answerKeyStoreId()
{
    const QString keyStoreId = m_stored.answers().keyStoreId;
    if (keyStoreId.isEmpty())
        return unanswered("KeyStore Id is empty!");
    m_eventHandler.submitKeyStoreId(m_id, keyStoreId);
    return true;
}

bool QcaHandler::answerObjectId()
{
    const QString objectId = m_stored.answers().objectId;
    if (objectId.isEmpty())
        return unanswered("Object Id is empty!");
    m_eventHandler.submitKeyStoreEntryName(m_id, objectId);
    return true;
}

bool QcaHandler::answerPassword()
{
    const QCA::SecureArray password = m_stored.answers().password;
    // `isEmpty()` would refuse the array made from "" too, which is an answer.
    if (password.isNull())
        return unanswered("Password is null!");
    m_eventHandler.submitPassword(m_id, password);
    return true;
}
