#ifndef ZOR_MODEL_LOG_H
#define ZOR_MODEL_LOG_H

// The console's exchange log: rows are only ever appended (or all cleared,
// or the oldest dropped), and their texts are made when a view asks for
// them. The blocks' bytes lie end to end in large shared chunks and each
// row is a 12-byte record pointing into them, so a row of a 64-byte block
// costs under 80 bytes of memory, and a cleared log gives it all back.
//
// The log keeps at most maxRows() rows (1,000,000 unless set otherwise),
// so a session left running for a week cannot exhaust memory: past the
// cap the oldest rows go, a sixteenth of the cap at a time, and a first
// row says how many went (cons_043). That row has no time, size or bytes,
// is never a match of a search and stays while a filter is set.
//
// What a view shows of a cell is cut to a few hundred characters: shaping
// the text of a megabyte-long cell on every paint would freeze the window.
// text() and the exports always give the whole cell.
//
// It also keeps at most maxBytes() bytes of block data (256 MB unless set
// otherwise): a row of a 64 KB block costs 64 KB, so the row cap alone
// would let a log of large blocks take tens of gigabytes. Past the budget
// the oldest rows go the same way, down to a sixteenth below it; the
// newest row stays even when it alone is over.
//
// A filter (direction, text) hides rows from the view; row numbers of the
// model's interface are those of the rows shown. Exports take every row.

#include <QAbstractTableModel>
#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QList>
#include <deque>

class ZOR_Model_Log : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { ColumnTime, ColumnDirection, ColumnSize, ColumnData, ColumnHex, ColumnCount };
    enum Direction { DirectionOut = 0, DirectionIn = 1 };
    enum class Format { Csv, Text };
    // Characters of a cell that a view shows; longer cells end in "…".
    static constexpr int nShownChars = 300;
    static constexpr int nDefaultMaxRows = 1000000;
    static constexpr qint64 nDefaultMaxBytes = qint64(256) << 20;

    explicit ZOR_Model_Log(QObject* parent = nullptr);
    ~ZOR_Model_Log() override;

    // direction: 0 "OUT", 1 "IN", anything else no direction text.
    void append(int direction, const QByteArray& data, qint64 nMSecsSinceEpoch);
    // Empties the log, the dropped-rows row included, and hands the
    // memory back to the system.
    void clear();
    // Rows kept before the oldest are dropped; at least 1. Lowering it
    // below the rows held drops them at once.
    void setMaxRows(int nRows);
    int maxRows() const { return nMaxRows; }
    // Bytes of block data kept before the oldest rows are dropped; at least
    // 1. Lowering it below the bytes held drops rows at once.
    void setMaxBytes(qint64 nBytes);
    qint64 maxBytes() const { return nMaxBytes; }
    // Bytes of block data in the rows held.
    qint64 blockBytes() const { return nBlockBytes; }
    // Rows dropped since the log was last cleared.
    qint64 droppedRowCount() const { return nDropped; }

    // Whole cell texts of a shown row.
    QString text(int row, int column) const;
    QByteArray bytes(int row) const;
    qint64 time(int row) const;
    // Milliseconds from the last block sent to this received one; -1 when
    // the row is no received block or nothing was sent before it.
    qint64 replyMs(int row) const;
    // The row as the details pane shows it: time, direction, size, reply
    // time, the whole text as text (line ends break it, other control bytes
    // show as ".") and a hex dump with offsets.
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
    // Rows held, shown or not, without the dropped-rows row.
    int totalRowCount() const { return int(rows.size()); }

    // Rows as tab-separated cells, one line each ("\n"), for the clipboard.
    QString rowsAsTsv(const QList<int>& shownRows) const;
    QString rowsAsHex(const QList<int>& shownRows) const;
    // Every row, times with milliseconds, the dropped-rows row first. CSV: ";" separated, quoted where
    // needed, a header line, UTF-8 with BOM, "\r\n" line ends.
    QByteArray exportLog(Format format) const;
    // Written atomically; false with errorString() when it could not be.
    bool saveLog(const QString& qsPath, Format format, QString* errorString = nullptr) const;

    static int initialWidth(int column);
    // In the program language; Russian: "Время", "IN/OUT", "Размер (байт)",
    // "Данные", "Данные (HEX)".
    static QString headerText(int column);
    // Tells the views that the headers and the texts of the program
    // language changed.
    void retranslate();
    // Times on screen with milliseconds (exports always have them).
    void setTimeWithMs(bool bOn);
    bool isTimeWithMs() const { return bTimeWithMs; }
    // Text colours of sent and received rows; invalid colours: the view's.
    void setDirectionColours(const QColor& out, const QColor& in);
    // A shown row's identity, which outlives filters (-1 for none), and the
    // shown row of an identity (-1 when hidden or gone).
    qint64 rowId(int row) const;
    int rowOfId(qint64 nId) const;
    // "." for every byte below 33, the Windows-1251 character otherwise.
    static QString visibleText(const QByteArray& data);
    // 16 bytes a line: offset, hex bytes, printable form.
    static QString hexDump(const QByteArray& data);
    QFont font() const { return rowFont; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    // A row's block lies in a chunk from nOffset up to the next row's
    // offset (or the chunk's end); its time counts from the chunk's. A
    // reply time is kept up to 12 days.
    struct Row
    {
        qint32 nTimeDelta; // ms after the chunk's nBaseTime
        quint32 nOffset;
        quint32 nReplyKind; // (reply ms + 1) << 2 | Kind
    };
    enum Kind : quint8 { KindOut = DirectionOut, KindIn = DirectionIn, KindOther };
    struct Chunk
    {
        qint64 nFirstRow; // serial number of its first row
        qint64 nBaseTime;
        char* data;
        int nUsed;
        int nCapacity;
    };
    // Rows are named by serial numbers counted from the last clear; the
    // first held row is number nDropped.
    static constexpr qint64 kDropRow = -2;
    qint64 serialAt(int shownRow) const;
    const Row& row(qint64 serial) const { return rows[size_t(serial - nDropped)]; }
    size_t chunkIndex(qint64 serial) const;
    qint64 timeOf(qint64 serial) const { return chunks[chunkIndex(serial)].nBaseTime + row(serial).nTimeDelta; }
    static int kindOf(const Row& r) { return int(r.nReplyKind & 3); }
    static qint64 replyOf(const Row& r) { return qint64(r.nReplyKind >> 2) - 1; }
    // The row's bytes, borrowed from the chunk: valid until the log changes.
    QByteArray rawBytes(qint64 serial) const;
    char* reserveBytes(int nSize, qint64 nTime);
    void dropOldest(qint64 nRows);
    void keepWithinBytes(qint64 nTarget);
    void releaseStorage();
    bool passes(qint64 serial) const;
    QString cellText(qint64 serial, int column, bool bWhole) const;
    QString toolTip(qint64 serial, int column) const;
    QString dropText() const;

    std::deque<Row> rows;
    std::deque<Chunk> chunks;
    // Serial numbers of the rows shown, while a filter is set.
    std::deque<qint64> shown;
    qint64 nDropped = 0;
    qint64 nHeldBytes = 0;
    bool bDropRow = false;
    int nMaxRows = nDefaultMaxRows;
    qint64 nMaxBytes = nDefaultMaxBytes;
    qint64 nBlockBytes = 0;
    int nFilterDirection = -1;
    QString qsFilterText;
    qint64 nLastSentTime = -1;
    QFont rowFont;
    bool bTimeWithMs = false;
    QColor colourOut;
    QColor colourIn;
};

#endif
