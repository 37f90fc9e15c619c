// The console log's byte budget: rows of large blocks are dropped, oldest
// first, once their bytes pass the budget, as rows are past the row cap.

#include "commands/zor_model_log.h"

#include <QAbstractItemModelTester>
#include <QtTest>

namespace {

// Block i: its number in the first bytes, then a fill, so a kept row can be
// told from every other.
QByteArray block(int i, int size)
{
    QByteArray b(size, char('a' + i % 26));
    const QByteArray n = QByteArray::number(i);
    b.replace(0, qMin(n.size(), size), n.left(size));
    return b;
}

} // namespace

class TestLogBudget : public QObject
{
    Q_OBJECT
private slots:
    void largeBlocksStayWithinTheDefaultBudget();
    void budgetDropsTheOldestRows_data();
    void budgetDropsTheOldestRows();
};

// 5,000 rows of 64 KB are 320 MB: far below the row cap, past the budget.
void TestLogBudget::largeBlocksStayWithinTheDefaultBudget()
{
    ZOR_Model_Log log;
    QCOMPARE(log.maxBytes(), qint64(256) * 1024 * 1024);
    const int kBlock = 64 * 1024;
    const int kRows = 5000;
    const QByteArray data(kBlock, 'x');
    for (int i = 0; i < kRows; ++i) {
        log.append(i % 2, data, 1000 + i);
        QVERIFY(log.blockBytes() <= log.maxBytes());
    }
    QVERIFY(log.droppedRowCount() > 0);
    QCOMPARE(log.droppedRowCount() + log.totalRowCount(), qint64(kRows));
    QCOMPARE(log.blockBytes(), qint64(log.totalRowCount()) * kBlock);
    QCOMPARE(log.time(log.rowCount() - 1), qint64(1000 + kRows - 1));
}

void TestLogBudget::budgetDropsTheOldestRows_data()
{
    QTest::addColumn<qint64>("budget");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("direction");
    QTest::newRow("blocks of 1000 in 64000") << qint64(64000) << 1000 << 500 << -1;
    QTest::newRow("filtered") << qint64(64000) << 1000 << 500 << int(ZOR_Model_Log::DirectionIn);
    QTest::newRow("block as large as the budget") << qint64(4096) << 4096 << 20 << -1;
    QTest::newRow("block larger than the budget") << qint64(100) << 5000 << 10 << -1;
}

void TestLogBudget::budgetDropsTheOldestRows()
{
    QFETCH(qint64, budget);
    QFETCH(int, size);
    QFETCH(int, rows);
    QFETCH(int, direction);
    ZOR_Model_Log log;
    log.setMaxBytes(budget);
    log.setFilter(direction, QString());
    QAbstractItemModelTester tester(&log, QAbstractItemModelTester::FailureReportingMode::QtTest);
    for (int i = 0; i < rows; ++i)
        log.append(i % 2, block(i, size), 1000 + i);
    // Within the budget, or the newest row alone when it is over by itself.
    QVERIFY(log.blockBytes() <= budget || log.totalRowCount() == 1);
    QCOMPARE(log.blockBytes(), qint64(log.totalRowCount()) * size);
    QCOMPARE(log.droppedRowCount() + log.totalRowCount(), qint64(rows));
    // The first row says how many went.
    QVERIFY(log.bytes(0).isEmpty());
    QVERIFY(log.text(0, ZOR_Model_Log::ColumnData).endsWith(QString::number(log.droppedRowCount())));
    // The rows kept are the newest, whole.
    for (int row = 1; row < log.rowCount(); ++row) {
        const int i = int(log.time(row) - 1000);
        QVERIFY(i >= log.droppedRowCount());
        QCOMPARE(log.bytes(row), block(i, size));
    }
    // A lower budget drops at once; a cleared log holds nothing.
    log.setMaxBytes(size);
    QCOMPARE(log.totalRowCount(), 1);
    log.clear();
    QCOMPARE(log.blockBytes(), qint64(0));
}

QTEST_GUILESS_MAIN(TestLogBudget)

#include "tst_log_budget.moc"
