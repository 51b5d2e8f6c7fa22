// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/rowlines.h"

#include "tools/rowentry.h"
#include "tools/rows.h"

#include <utility>

namespace Trivex {

RowLines::RowLines(QObject *parent)
    : Job(parent)
    , m_reading([this](int row) { add(m_wanted.at(row)); }, [this] { finish(); })
{
}

RowLines::~RowLines() = default;

double RowLines::progress() const
{
    return m_reading.progress();
}

void RowLines::cancel()
{
    if (!isRunning())
        return;
    m_lines.clear();
    finish();
}

void RowLines::write(RowSelection *selection)
{
    cancel();
    m_list = selection ? selection->rows() : nullptr;
    const QVector<int> rows = m_list ? selection->chosen() : QVector<int>();
    if (!begin())
        return;
    if (!rows.isEmpty()) {
        m_roles = {roleNamed(*m_list, QStringLiteral("name")),
                   roleNamed(*m_list, QStringLiteral("issuer")),
                   roleNamed(*m_list, QStringLiteral("type"))};
    }
    m_wanted.reserve(rows.size());
    for (const int row : rows)
        m_wanted.append({m_list->identityAt(row), row, m_list->isKeyAt(row)});
    m_reading.start(m_wanted.size());
}

void RowLines::finish()
{
    m_reading.stop();
    m_wanted.clear();
    m_text = std::exchange(m_lines, {}).join(QLatin1Char('\n'));
    end();
}

void RowLines::add(const Wanted &wanted)
{
    if (!m_list || !m_list->entries())
        return;
    // Mostly it is where it was. A search takes rows from the list, and nothing from its entries.
    if (wanted.row < m_list->count() && m_list->identityAt(wanted.row) == wanted.identity) {
        m_lines += lineOf(*m_list, wanted.row);
        return;
    }
    const int row = m_list->entries()->rowOfIdentity(wanted.identity);
    if (row >= 0) {
        m_lines += lineOf(*m_list->entries(), row);
        return;
    }
    // The keys without a certificate are among no entries.
    const int key = wanted.isKey ? m_list->rowOfIdentity(wanted.identity) : -1;
    if (key >= 0)
        m_lines += lineOf(*m_list, key);
}

QString RowLines::lineOf(const QAbstractItemModel &model, int row) const
{
    const auto value = [index = model.index(row, 0)](int role) { return index.data(role); };
    const bool isKey = value(TokenKeyModel::IsKeyRole).toBool();
    const bool isRequest = value(m_roles.type).toInt() == SavedRequestType;
    QStringList parts{value(m_roles.name).toString()};
    if (!isRequest)
        parts += value(m_roles.issuer).toString();
    if (!isKey)
        parts += m_validity.word(value(EntryModel::ValidityRole).toInt());
    if (!isRequest)
        parts += m_validity.until(value(EntryModel::UntilRole).toDateTime());
    parts += value(EntryModel::StoreNameRole).toString();
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

} // namespace Trivex
