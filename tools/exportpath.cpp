// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/exportpath.h"

#include "qca/chains/chaincheck.h"

#include <algorithm>
#include <utility>

namespace Trivex {

namespace {

/// Whether what follows has the name of the issuer alone.
bool hasStranger(const ChainStep &step)
{
    return std::any_of(step.findings.cbegin(), step.findings.cend(), [](const ChainFinding &one) {
        return one.reason == ChainReason::WrongSignature
            || one.reason == ChainReason::IssuerDiffers;
    });
}

} // namespace

ExportPath::ExportPath(QObject *parent)
    : QObject(parent)
{
}

void ExportPath::gather(EntryModel *entries, const QByteArray &certificate,
                        std::function<void(const ChainInput &)> then)
{
    drop();
    m_certificate = certificate;
    m_then = std::move(then);
    m_sources = ChainSources::of(entries);
    if (m_sources) {
        connect(m_sources, &ChainSources::changed, this, &ExportPath::look);
        // It goes with its model.
        connect(m_sources, &QObject::destroyed, this, &ExportPath::look);
    }
    look();
}

void ExportPath::look()
{
    if (!m_then || (m_sources && !m_sources->isComplete()))
        return;
    ChainInput input;
    input.certificate = m_certificate;
    if (m_sources)
        input = m_sources->index().inputFor(m_certificate);
    const auto then = std::exchange(m_then, nullptr);
    drop();
    then(input);
}

void ExportPath::drop()
{
    if (m_sources)
        disconnect(m_sources, nullptr, this, nullptr);
    m_sources.clear();
    m_then = nullptr;
}

QVector<QByteArray> ExportPath::of(const ChainInput &input, const std::atomic<bool> &isCancelled)
{
    QVector<QByteArray> all;
    const ChainResult result = checkChain(input, isCancelled);
    for (const ChainStep &step : result.steps) {
        all += step.der;
        if (hasStranger(step))
            break;
    }
    return all.isEmpty() ? QVector<QByteArray>{input.certificate} : all;
}

} // namespace Trivex
