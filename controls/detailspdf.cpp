// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "controls/detailspdf.h"

#include "qca/base/atomicfile.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPdfWriter>
#include <QTextDocument>
#include <QTextOption>

namespace Trivex {

namespace {

/// Characters that a document has room for; a list of many thousand lines is no reading matter.
constexpr int MostCharacters = 512 * 1024;

QString field(const QVariant &map, const char *name)
{
    return map.toMap().value(QLatin1String(name)).toString();
}

QString lines(const QString &text)
{
    return text.toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>"));
}

QString rowHtml(const QVariant &row)
{
    const bool isFixed = row.toMap().value(QStringLiteral("fixed")).toBool();
    const QString value = lines(field(row, "value"));
    return QStringLiteral("<tr><td width=\"30%\">%1</td><td width=\"70%\">%2</td></tr>")
        .arg(lines(field(row, "label")),
             isFixed ? QStringLiteral("<tt>%1</tt>").arg(value) : value);
}

QString pageHtml(const QString &title, const QVariantList &groups)
{
    QString html = QStringLiteral("<h2>%1</h2>").arg(lines(title));
    for (const QVariant &group : groups) {
        html += QStringLiteral("<h3>%1</h3><table width=\"100%\" cellpadding=\"3\">")
                    .arg(lines(field(group, "title")));
        const QVariantList rows = group.toMap().value(QStringLiteral("rows")).toList();
        for (const QVariant &row : rows) {
            if (html.size() < MostCharacters)
                html += rowHtml(row);
        }
        html += QStringLiteral("</table>");
    }
    return html.size() < MostCharacters ? html : html + QStringLiteral("<p>…</p>");
}

QByteArray makePdf(const QString &title, const QVariantList &groups)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(title);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    QTextDocument document;
    // Bytes in a row have no place to break at.
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document.setDefaultTextOption(option);
    document.setHtml(pageHtml(title, groups));
    document.print(&writer);
    return buffer.data();
}

/// The writer of the document does not tell of a full disk: its file would be cut.
bool writePdf(const QString &path, const QString &title, const QVariantList &groups)
{
    const QByteArray document = path.isEmpty() ? QByteArray() : makePdf(title, groups);
    return !document.isEmpty() && writeAtomically(path, document, true) == WriteResult::Written;
}

} // namespace

DetailsPdf::DetailsPdf(QObject *parent)
    : QObject(parent)
{
}

DetailsPdf::~DetailsPdf()
{
    if (m_worker)
        m_worker->wait();
}

bool DetailsPdf::isRunning() const
{
    return m_worker != nullptr;
}

void DetailsPdf::write(const QString &path, const QString &title, const QVariantList &groups)
{
    if (m_worker)
        return;
    m_worker.reset(QThread::create([=] { m_isWritten = writePdf(path, title, groups); }));
    connect(m_worker.get(), &QThread::finished, this, [this, path] {
        m_worker->wait();
        m_worker.reset();
        Q_EMIT runningChanged();
        Q_EMIT finished(path, m_isWritten);
    });
    Q_EMIT runningChanged();
    m_worker->start();
}

QString DetailsPdf::temporaryPath()
{
    auto folder = std::make_unique<QTemporaryDir>();
    if (!folder->isValid())
        return {};
    m_folders.push_back(std::move(folder));
    return m_folders.back()->filePath(QStringLiteral("details.pdf"));
}

} // namespace Trivex
