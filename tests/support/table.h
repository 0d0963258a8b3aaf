#pragma once

#include <QStringList>
#include <QTest>

/// Adds a data row for each line of a table, with the line as its name. The column "cells" contains the cells
/// of the line, which are separated by "|".
inline void addRows(const char *table) {
    QTest::addColumn<QStringList>("cells");
    for (const QString &line : QString::fromUtf8(table).split(u'\n', Qt::SkipEmptyParts)) {
        QStringList cells;
        for (const QString &cell : line.split(u'|'))
            cells += cell.trimmed();
        QTest::newRow(line.left(80).toUtf8().constData()) << cells;
    }
}
