// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/cmsmessage.h"

#include "providers/openssl/messagework.h"

#include <QPointer>

namespace Trivex {

CmsMessage::CmsMessage(QCA::Provider *provider, std::shared_ptr<const MessageMeans> means)
    : QCA::MessageContext(provider, QStringLiteral("cmsmsg"))
    , m_means(std::move(means))
{
}

QCA::Provider::Context *CmsMessage::clone() const
{
    auto *copy = new CmsMessage(provider(), m_means);
    copy->m_task = m_task;
    return copy;
}

void CmsMessage::restart()
{
    ++m_run;
    m_state = Idle;
    m_written = 0;
    m_result = MessageResult();
    m_task.input.clear();
}

void CmsMessage::reset()
{
    restart();
    m_task = MessageTask();
}

void CmsMessage::setupEncrypt(const QCA::SecureMessageKeyList &keys)
{
    m_task.recipients = keys;
}

void CmsMessage::setupSign(const QCA::SecureMessageKeyList &keys, QCA::SecureMessage::SignMode mode,
                           bool bundleSigner, bool)
{
    m_task.signers = keys;
    m_task.mode = mode;
    m_task.bundlesSigner = bundleSigner;
}

void CmsMessage::setupVerify(const QByteArray &detachedSig)
{
    m_task.signature = detachedSig;
}

void CmsMessage::start(QCA::SecureMessage::Format format, Operation operation)
{
    restart();
    m_task.format = format;
    m_task.operation = operation;
    m_state = Collecting;
}

void CmsMessage::update(const QByteArray &in)
{
    if (m_state != Collecting)
        return;
    m_task.input += in;
    m_written += in.size();
    const auto tell = [this, run = m_run] {
        if (run == m_run && m_state != Finished)
            Q_EMIT updated();
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

QByteArray CmsMessage::read()
{
    return std::exchange(m_result.output, QByteArray());
}

int CmsMessage::written()
{
    return std::exchange(m_written, 0);
}

void CmsMessage::end()
{
    if (m_state != Collecting)
        return;
    m_state = Waiting;
    const auto run = [this, run = m_run] {
        if (run == m_run && m_state == Waiting && work())
            Q_EMIT updated();
    };
    QMetaObject::invokeMethod(this, run, Qt::QueuedConnection);
}

bool CmsMessage::work()
{
    m_state = Working;
    const QPointer<CmsMessage> self(this);
    const int run = m_run;
    const MessageTask task = m_task;
    const MessageMeans means = *m_means;
    MessageResult result = workOn(task, means);
    if (!self || run != m_run)
        return false;
    m_result = std::move(result);
    m_state = Finished;
    return true;
}

bool CmsMessage::waitForFinished(int)
{
    if (m_state == Waiting)
        return work();
    return m_state == Finished;
}

} // namespace Trivex
