#ifndef ZOR_CAPTIONLIST_H
#define ZOR_CAPTIONLIST_H

// A selection list: each entry a stored code and a caption, the caption a
// language key (looked up at fill time), a fixed text, or a text composed by
// a function. Settings keep the code; the widget shows the caption; a
// selection is matched by caption text, so translateForm() must fill() every
// list before values are loaded.
//
//   ZOR_CaptionList parity = ZOR_CaptionList()
//       .addText("N", "None").addText("E", "Even").addText("O", "Odd");
//   parity.fill(ui.comboParity);                 // keeps the selected code
//   parity.select(ui.comboParity, "E");          // false for an unknown code
//   node->writeString("parity", parity.currentCode(ui.comboParity));
//
// Codes are texts; integer codes are their decimal texts (fromCount()).

#include <QString>
#include <QVector>

#include <functional>

class QComboBox;

class ZOR_CaptionList
{
public:
    ZOR_CaptionList() = default;

    ZOR_CaptionList& add(const QString& qsCode, const QString& qsKey);
    ZOR_CaptionList& addText(const QString& qsCode, const QString& qsText);
    ZOR_CaptionList& addComposed(const QString& qsCode, std::function<QString()> caption);
    // Codes "0".."n-1" (or from nFirst) with captions qsPattern.arg(code):
    // fromCount(4, "%1 s") -> "0 s", "1 s", ...
    static ZOR_CaptionList fromCount(int nCount, const QString& qsPattern, int nFirst = 0);
    // Codes and fixed captions (UTF-8) from a table of device models or the
    // like, whose rows have lpCode and lpCaption.
    template <typename Row, int N>
    static ZOR_CaptionList fromTable(const Row (&rows)[N])
    {
        ZOR_CaptionList list;
        for (const Row& row : rows)
            list.addText(QString::fromLatin1(row.lpCode), QString::fromUtf8(row.lpCaption));
        return list;
    }

    int count() const { return m_items.size(); }
    bool isEmpty() const { return m_items.isEmpty(); }
    void clear() { m_items.clear(); }
    QString code(int nIndex) const;
    QString caption(int nIndex) const; // in the current language
    QStringList captions() const;

    int indexOfCode(const QString& qsCode) const; // -1 when unknown
    int indexOfCaption(const QString& qsCaption) const; // -1 when unknown
    QString captionOf(const QString& qsCode) const; // "" when unknown
    QString codeOf(const QString& qsCaption) const; // "" when unknown

    // Refills the box with the captions, keeping the selected code (the first
    // entry when nothing was selected), without emitting change signals.
    void fill(QComboBox* lpBox) const;
    // Selects the entry of this code; false (selection unchanged) when unknown.
    bool select(QComboBox* lpBox, const QString& qsCode) const;
    // Selects the code, or qsFallback when the code is unknown.
    void selectOr(QComboBox* lpBox, const QString& qsCode, const QString& qsFallback) const;
    // The code of the shown caption; "" when the caption is not in the list.
    QString currentCode(const QComboBox* lpBox) const;

private:
    struct Item
    {
        QString qsCode;
        QString qsKey; // language key, when not empty
        QString qsText; // fixed text otherwise
        std::function<QString()> composed;
    };
    QVector<Item> m_items;
};

#endif
