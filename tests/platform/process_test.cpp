#include "platform/process.h"
#include "support/test.h"

#include <pwd.h>
#include <unistd.h>

using namespace lexiquill;

class ProcessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutHomeTheAccountHasOne() {
        const QString home = QFile::decodeName(::getpwuid(::getuid())->pw_dir);
        qunsetenv("HOME");
        prepareProcess();
        QCOMPARE(QDir::homePath(), home);
        qputenv("HOME", "");
        prepareProcess();
        QCOMPARE(QDir::homePath(), home);
        qputenv("HOME", "/somewhere");
        prepareProcess();
        QCOMPARE(QDir::homePath(), u"/somewhere"_s);
    }
};

QTEST_GUILESS_MAIN(ProcessTest)
#include "process_test.moc"
