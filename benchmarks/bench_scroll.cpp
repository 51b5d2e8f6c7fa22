// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
//
// Frames of a list of 50,000 rows while it is scrolled, drawn by software, against a plain list
// that shows the same texts.
#include "benchmarks/measure.h"

#include <QAbstractListModel>
#include <QDate>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int Rows = 50000;
constexpr int Frames = 400;

const char ourList[] = R"(
import QtQuick 2.15
import QtQuick.Window 2.15
import Trivex.Crypto.Controls 1.0
Window {
    width: 430; height: 700; visible: true; color: Theme.window
    CertificateList { anchors.fill: parent; model: rows }
})";

const char plainList[] = R"(
import QtQuick 2.15
import QtQuick.Window 2.15
Window {
    width: 430; height: 700; visible: true
    ListView {
        objectName: "certificateList"
        anchors.fill: parent
        reuseItems: true
        cacheBuffer: 0
        clip: true
        model: rows
        delegate: Item {
            width: 430; height: 56
            Text { x: 60; y: 8; width: 240; elide: Text.ElideRight; text: name; font.pixelSize: 13 }
            Text { x: 60; y: 30; width: 240; elide: Text.ElideRight; text: issuer; font.pixelSize: 11 }
            Text { x: 20; y: 18; text: initial; font.pixelSize: 14; font.bold: true }
            Text { x: 340; y: 8; text: "Valid"; font.pixelSize: 11; font.bold: true }
            Text { x: 340; y: 30; text: until.toLocaleDateString(Qt.locale(), Locale.ShortFormat)
                   font.pixelSize: 11 }
        }
    }
})";

/// What a list of the program shows, read from nowhere.
class RowModel : public QAbstractListModel {
public:
    enum Role { Name = Qt::UserRole, Issuer, Place, Section, Initial, State, Until, HasKey };

    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : Rows; }
    QHash<int, QByteArray> roleNames() const override
    {
        return {{Name, "name"},       {Issuer, "issuer"},   {Place, "storeName"},
                {Section, "section"}, {Initial, "initial"}, {State, "validity"},
                {Until, "until"},     {HasKey, "hasKey"}};
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        const int row = index.row();
        switch (role) {
        case Name:
            return QStringLiteral("Certificate %1 of somebody").arg(row);
        case Issuer:
            return QStringLiteral("Authority number %1").arg(row % 97);
        case Place:
        case Section:
            return QStringLiteral("Store %1").arg(row / 1000);
        case Initial:
            return QString(QChar('A' + row % 26));
        case State:
            return 1 + row % 3;
        case Until:
            return QDateTime(QDate(2027, 1, 1).addDays(row % 700), QTime(12, 0));
        case HasKey:
            return false;
        default:
            return {};
        }
    }
};

struct Times {
    double median = 0;
    double worst = 0; ///< of a hundred frames all but one are shorter
};

/// Processor's time of the frames that follow steps of so many pixels.
Times scroll(QQuickWindow *window, QQuickItem *list, double step)
{
    QVector<double> times;
    bool isDrawn = false;
    const auto drawn =
        QObject::connect(window, &QQuickWindow::frameSwapped, [&] { isDrawn = true; });
    for (int frame = 0; frame < Frames; ++frame) {
        const Measure::CpuTime time;
        isDrawn = false;
        list->setProperty("contentY", list->property("contentY").toDouble() + step);
        window->update();
        while (!isDrawn)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        times.append(time.milliseconds());
    }
    QObject::disconnect(drawn);
    Times result;
    result.median = Measure::median(times);
    std::sort(times.begin(), times.end());
    result.worst = times.at(Frames * 99 / 100);
    return result;
}

/// The times at each of the steps; a window that can't be made has none.
QVector<Times> timesOf(const char *qml, const QVector<double> &steps)
{
    RowModel model;
    QQmlApplicationEngine engine;
    engine.addImportPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../qml"));
    engine.rootContext()->setContextProperty(QStringLiteral("rows"), &model);
    engine.loadData(qml);
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    auto *list =
        window ? window->findChild<QQuickItem *>(QStringLiteral("certificateList")) : nullptr;
    if (!list)
        return QVector<Times>(steps.size());
    QVector<Times> times;
    scroll(window, list, 10); // what is done once for all is no part of it
    for (const double step : steps)
        times.append(scroll(window, list, step));
    return times;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QUICK_BACKEND", "software");
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QQuickStyle::setFallbackStyle(QStringLiteral("Fusion"));
    QQuickStyle::setStyle(QCoreApplication::applicationDirPath()
                          + QStringLiteral("/../qml/Trivex/Crypto/Controls/Style"));
    struct Speed {
        const char *name;
        double step;
    };
    const QVector<Speed> speeds = {
        {"a few pixels a frame", 7}, {"a row a frame", 56}, {"a page a frame, all rows new", 700}};
    QVector<double> steps;
    for (const Speed &speed : speeds)
        steps.append(speed.step);
    const QVector<Times> plain = timesOf(plainList, steps);
    const QVector<Times> ours = timesOf(ourList, steps);
    Measure::Table table(QStringLiteral("A frame while 50,000 rows are scrolled, processor's time"),
                         QStringLiteral("a plain list of the same texts"));
    for (int i = 0; i < speeds.size(); ++i) {
        const QString name = QString::fromLatin1(speeds.at(i).name);
        table.add(name + QStringLiteral(", median"), 0, ours.at(i).median, plain.at(i).median);
        table.add(name + QStringLiteral(", 99th percentile"), 0, ours.at(i).worst,
                  plain.at(i).worst);
    }
    table.note(QStringLiteral("%1 frames each, drawn by software, 430 by 700 pixels.").arg(Frames));
    return ours.first().median > 0 ? 0 : 1;
}
