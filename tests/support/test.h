#pragma once

#include "files.h"
#include "table.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

// Operations can be slow on a loaded machine.
#undef QTRY_VERIFY
#define QTRY_VERIFY(expression) QTRY_VERIFY_WITH_TIMEOUT((expression), 60'000)
#undef QTRY_COMPARE
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT((actual), (expected), 60'000)

using namespace Qt::StringLiterals;

/// Declares the columns of a table of data: columns<int, QString>("count", "text").
template <typename... Types, typename... Names> void columns(Names... names) {
    (QTest::addColumn<Types>(names), ...);
}
