#ifndef ZOR_MODEL_LOG_H
#define ZOR_MODEL_LOG_H

// The console's exchange log: rows are only ever appended (or all cleared),
// and their texts are made when a view asks for them, so a long session
// costs one small record per block and no per-row widgets.
//
// What a view shows of a cell is cut to a few hundred characters: shaping
// the text of a megabyte-long cell on every paint would freeze the window.
// text() and the exports always give the whole cell.
//
// A filter (direction, text) hides rows from the view; row numbers of the
// model's interface are those of the rows shown. Exports take every row.

#include <QAbstractTableModel>
#include <QByteArray>
#include <QFont>
#include <QList>
#include <vector>

class ZOR_Model_Log : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { ColumnTime, ColumnDirection, ColumnSize, ColumnData, ColumnHex, ColumnCount };
    enum Direction { DirectionOut = 0, DirectionIn = 1 };
    enum class Format { Csv, Text };
    // Characters of a cell that a view shows; longer cells end in "…".
    static constexpr int nShownChars = 300;

    explicit ZOR_Model_Log(QObject* parent = nullptr);

    // direction: 0 "OUT", 1 "IN", anything else no direction text.
    void append(int direction, const QByteArray& data, qint64 nMSecsSinceEpoch);
    void clear();

    // Whole cell texts of a shown row.
    QString text(int row, int column) const;
    QByteArray bytes(int row) const;
    qint64 time(int row) const;
    // Milliseconds from the last block sent to this received one; -1 when
    // the row is no received block or nothing was sent before it.
    qint64 replyMs(int row) const;
    // The row as the details pane shows it: time, direction, size, reply
    // time, the whole text and a hex dump with offsets.
    QString detailText(int row) const;

    // Shown rows whose data or hex text contains the needle (any case).
    bool matches(int row, const QString& qsNeedle) const;
    // The next shown row after (or before) `from` that matches, wrapping
    // around; -1 when none does.
    int findRow(const QString& qsNeedle, int from, bool bForward) const;
    // Hides rows of another direction (-1: any) or without the text ("":
    // any). The view is reset.
    void setFilter(int nDirection, const QString& qsText);
    bool isFiltered() const { return nFilterDirection >= 0 || !qsFilterText.isEmpty(); }
    int totalRowCount() const { return int(rows.size()); }

    // Rows as tab-separated cells, one line each ("\n"), for the clipboard.
    QString rowsAsTsv(const QList<int>& shownRows) const;
    QString rowsAsHex(const QList<int>& shownRows) const;
    // Every row, times with milliseconds. CSV: ";" separated, quoted where
    // needed, a header line, UTF-8 with BOM, "\r\n" line ends.
    QByteArray exportLog(Format format) const;
    // Written atomically; false with errorString() when it could not be.
    bool saveLog(const QString& qsPath, Format format, QString* errorString = nullptr) const;

    static int initialWidth(int column);
    static QString headerText(int column);
    // "." for every byte below 33, the Windows-1251 character otherwise.
    static QString visibleText(const QByteArray& data);
    // 16 bytes a line: offset, hex bytes, printable form.
    static QString hexDump(const QByteArray& data);
    QFont font() const { return rowFont; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    struct Row {
        qint64 nTime;
        qint64 nReplyMs;
        int nDirection;
        QByteArray data;
    };
    const Row* rowAt(int shownRow) const;
    bool passes(const Row& row) const;
    QString cellText(const Row& row, int column, bool bWhole) const;
    QString toolTip(const Row& row, int column) const;

    std::vector<Row> rows;
    // Indexes into rows of the rows shown, while a filter is set.
    std::vector<int> shown;
    int nFilterDirection = -1;
    QString qsFilterText;
    qint64 nLastSentTime = -1;
    QFont rowFont;
};

#endif
