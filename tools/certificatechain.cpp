// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/certificatechain.h"

#include "qca/chains/chaincheck.h"
#include "qca/describe/words.h"
#include "qca/questions/background.h"
#include "tools/chaintexts.h"
#include "tools/followed.h"

#include <QLocale>

#include <algorithm>
#include <utility>

namespace Trivex {

namespace {

/// The certificates and lists of a file.
CandidateIndex indexOf(const FileItemModel *items)
{
    CandidateIndex index;
    if (!items)
        return index;
    //% "This file"
    const QString place = qtTrId("trivex-app-chain-this-file");
    for (const FileItem &item : items->items()) {
        if (item.kind == FileObject::Certificate)
            index.add({item.der, place, false});
        else if (item.kind == FileObject::RevocationList)
            index.addList(item.der);
    }
    return index;
}

QVector<FileItem> itemsOf(const QVector<ChainStep> &steps)
{
    QVector<FileItem> items;
    for (const ChainStep &step : steps) {
        FileItem item;
        item.der = step.der;
        items += item;
    }
    return items;
}

} // namespace

CertificateChain::CertificateChain(QObject *parent)
    : Job(parent)
{
    m_later.setSingleShot(true);
    m_later.setInterval(0);
    connect(&m_later, &QTimer::timeout, this, &CertificateChain::update);
}

CertificateChain::~CertificateChain()
{
    if (m_work)
        m_work->isCancelled = true;
}

void CertificateChain::setEntries(EntryModel *entries)
{
    if (m_entries == entries)
        return;
    if (m_sources)
        disconnect(m_sources, nullptr, this, nullptr);
    m_entries = entries;
    m_sources = ChainSources::of(entries);
    if (m_sources)
        connect(m_sources, &ChainSources::changed, this, &CertificateChain::schedule);
    schedule();
    Q_EMIT entriesChanged();
}

void CertificateChain::setCertificate(QObject *certificate)
{
    if (m_certificate == certificate)
        return;
    m_certificate = certificate;
    clear();
    schedule();
    Q_EMIT certificateChanged();
}

void CertificateChain::setItems(FileItemModel *items)
{
    if (!followNext(&m_items, items, this))
        return;
    if (m_items)
        connect(m_items, &QAbstractItemModel::modelReset, this, &CertificateChain::schedule);
    schedule();
    Q_EMIT itemsChanged();
}

void CertificateChain::setItemRow(int row)
{
    if (m_itemRow == row)
        return;
    m_itemRow = row;
    clear();
    schedule();
    Q_EMIT itemRowChanged();
}

void CertificateChain::setDate(const QDateTime &date)
{
    if (m_date == date)
        return;
    m_date = date;
    schedule();
    Q_EMIT dateChanged();
}

void CertificateChain::setPurpose(int purpose)
{
    if (purpose < AnyPurpose || purpose > CodeSigning || purpose == int(m_purpose))
        return;
    m_purpose = ChainPurpose(purpose);
    schedule();
    Q_EMIT purposeChanged();
}

bool CertificateChain::setDateText(const QString &text)
{
    const QString typed = text.trimmed();
    if (typed.isEmpty()) {
        setDate(QDateTime());
        return true;
    }
    QDate day = QDate::fromString(typed, Qt::ISODate);
    const QLocale locale;
    const QString brief = locale.dateFormat(QLocale::ShortFormat);
    // Some locales write a year with two digits; people type all four.
    for (const QString &format : {brief, withWholeYear(brief), QStringLiteral("d.M.yyyy")}) {
        if (!day.isValid())
            day = locale.toDate(typed, format);
    }
    // A year of two digits is of this century: no certificate is older than 1988.
    if (day.isValid() && day.year() < 1950)
        day = day.addYears(100);
    if (!day.isValid())
        return false;
    // Today is this moment, and not its noon.
    setDate(day == QDate::currentDate() ? QDateTime() : QDateTime(day, QTime(12, 0)));
    return true;
}

void CertificateChain::schedule()
{
    m_later.start();
}

void CertificateChain::clear()
{
    // The running check answers an earlier question, even where it ends before `update`.
    if (m_work) {
        m_isStale = true;
        m_next = {};
        m_work->isCancelled = true;
    }
    if (!m_isReady)
        return;
    m_isReady = false;
    m_result = {};
    m_steps.setSteps({});
    m_stepItems.setItems({});
    Q_EMIT finished();
}

ChainInput CertificateChain::wantedInput() const
{
    ChainInput input;
    QByteArray certificate;
    if (m_certificate && m_sources) {
        const int row = m_entries->rowOfCertificate(m_certificate);
        certificate = row < 0 ? QByteArray() : m_sources->certificateOf(row);
    } else if (m_items && m_itemRow >= 0 && m_itemRow < m_items->items().size()) {
        const FileItem &item = m_items->items().at(m_itemRow);
        certificate = item.kind == FileObject::Certificate ? item.der : QByteArray();
    }
    // With a part of the candidates the verdict could be bad, and would be found again later.
    if (certificate.isEmpty() || (m_sources && !m_sources->isComplete()))
        return input;
    input = m_sources ? m_sources->index().inputFor(certificate, indexOf(m_items))
                      : indexOf(m_items).inputFor(certificate);
    input.date = m_date;
    input.purpose = m_purpose;
    return input;
}

void CertificateChain::update()
{
    const ChainInput wanted = wantedInput();
    if (wanted.certificate.isEmpty()) {
        m_input = {};
        clear();
        return;
    }
    if (m_work && (m_isStale ? m_next : m_input) == wanted)
        return;
    if (!m_work && m_isReady && m_input == wanted)
        return;
    m_next = wanted;
    if (m_work) {
        m_isStale = true;
        m_work->isCancelled = true;
        return;
    }
    startCheck();
}

void CertificateChain::startCheck()
{
    m_isStale = false;
    m_input = std::exchange(m_next, {});
    if (m_input.certificate.isEmpty())
        return;
    ++m_checks;
    m_work = std::make_shared<Work>();
    m_work->input = m_input;
    runInBackground([work = m_work] { work->result = checkChain(work->input, work->isCancelled); },
                    this, [this, work = m_work] { showResult(work->result); });
    begin();
}

void CertificateChain::showResult(const ChainResult &result)
{
    m_work.reset();
    if (m_isStale) {
        startCheck();
    } else {
        m_result = result;
        m_isReady = true;
        m_steps.setSteps(result.steps);
        m_stepItems.setItems(itemsOf(result.steps));
    }
    if (!m_work)
        end();
}

void CertificateChain::cancel()
{
    if (m_work)
        clear();
}

QString CertificateChain::word() const
{
    return m_isReady ? chainWord(m_result.verdict) : QString();
}

QString CertificateChain::message() const
{
    return m_isReady ? chainSentence(m_result) : QString();
}

QString CertificateChain::advice() const
{
    const ChainStep *step = gravestStep(m_result);
    return step ? chainAdvice(step->findings.constFirst().reason) : QString();
}

QString CertificateChain::note() const
{
    const bool isGood = m_isReady && m_result.verdict == ChainVerdict::Good;
    const bool isAlone = m_result.steps.size() < 2;
    if (!isGood || isAlone || m_result.steps.constFirst().isListed)
        return {};
    //% "Whether it was revoked was not looked at: no list of its issuer is here."
    return qtTrId("trivex-app-chain-not-listed");
}

QString CertificateChain::report() const
{
    return chainReport(m_result);
}

} // namespace Trivex
