#include "config/zor_formbinding.h"

#include "config/zor_configproblems.h"
#include "store/cxmlworkdata.h"
#include "store/zor_settingsnode.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

#include <climits>
#include <cstdlib>

namespace {

// strtol semantics, saturated to int: "12abc" is 12, "abc" 0.
int toInt(const QString& qsValue)
{
    const QByteArray bytes = qsValue.toLatin1();
    const long n = std::strtol(bytes.constData(), nullptr, 10);
    return int(qBound<long>(INT_MIN, n, INT_MAX));
}

int hexToInt(const QString& qsValue, bool* lpOk)
{
    const uint n = qsValue.trimmed().toUInt(lpOk, 16);
    return int(n);
}

QString upperHex(uint n, int nDigits)
{
    return QStringLiteral("%1").arg(n, nDigits, 16, QLatin1Char('0')).toUpper();
}

// The value of an upper-case hex row, or its default when the text is not
// hexadecimal or too wide for the row.
uint upperHexValue(const QString& qsValue, const QString& qsDefault, int nDigits)
{
    const quint64 nMax = nDigits >= 8 ? 0xFFFFFFFFull : (quint64(1) << (4 * nDigits)) - 1;
    bool ok = false;
    const quint64 n = qsValue.trimmed().toULongLong(&ok, 16);
    if (ok && n <= nMax)
        return uint(n);
    return qsDefault.toUInt(nullptr, 16);
}

} // namespace

int ZOR_FormBinding::intValue(const QString& qsValue)
{
    return toInt(qsValue);
}

ZOR_FormBinding& ZOR_FormBinding::append(Row row)
{
    m_rows.append(std::move(row));
    return *this;
}

ZOR_FormBinding& ZOR_FormBinding::check(const char* lpAttr, QAbstractButton* lpBox, bool bDefault)
{
    return append({lpAttr, lpBox, Check, bDefault ? QStringLiteral("1") : QStringLiteral("0"), nullptr, 0, {}, {}});
}

ZOR_FormBinding& ZOR_FormBinding::integer(const char* lpAttr, QSpinBox* lpSpin, int nDefault)
{
    return append({lpAttr, lpSpin, Integer, QString::number(nDefault), nullptr, 0, {}, {}});
}

ZOR_FormBinding& ZOR_FormBinding::text(const char* lpAttr, QLineEdit* lpEdit, const QString& qsDefault)
{
    return append({lpAttr, lpEdit, Text, qsDefault.isNull() ? QStringLiteral("") : qsDefault, nullptr, 0, {}, {}});
}

ZOR_FormBinding& ZOR_FormBinding::caption(
    const char* lpAttr, QComboBox* lpBox, const ZOR_CaptionList* lpList, const QString& qsDefault)
{
    return append({lpAttr, lpBox, Caption, qsDefault, lpList, 0, {}, {}});
}

ZOR_FormBinding& ZOR_FormBinding::index(const char* lpAttr, QComboBox* lpBox, int nDefault)
{
    return append({lpAttr, lpBox, Index, QString::number(nDefault), nullptr, 0, {}, {}});
}

ZOR_FormBinding& ZOR_FormBinding::hex(const char* lpAttr, QLineEdit* lpEdit, int nDefault, int nDigits)
{
    return append({lpAttr, lpEdit, Hex, QString::number(uint(nDefault), 16), nullptr, nDigits, {}, {}});
}

ZOR_FormBinding& ZOR_FormBinding::custom(const char* lpAttr, QWidget* lpWidget, const QString& qsDefault,
    std::function<QString()> store, std::function<void(const QString&)> show)
{
    Row row{lpAttr, lpWidget, Custom, qsDefault, nullptr, 0, std::move(store), std::move(show)};
    return append(std::move(row));
}

ZOR_FormBinding& ZOR_FormBinding::numberCaption(
    const char* lpAttr, QComboBox* lpBox, const ZOR_CaptionList* lpList, int nDefault, int nUnknown)
{
    const QString qsDefault = QString::number(nDefault);
    auto store = [lpBox, lpList, nUnknown] {
        const QString qsCode = lpList->currentCode(lpBox);
        return qsCode.isEmpty() ? QString::number(nUnknown) : qsCode;
    };
    auto show = [lpBox, lpList, qsDefault](
                    const QString& qsValue) { lpList->selectOr(lpBox, QString::number(toInt(qsValue)), qsDefault); };
    return append({lpAttr, lpBox, Custom, qsDefault, lpList, 0, store, show});
}

ZOR_FormBinding& ZOR_FormBinding::hexUpper(const char* lpAttr, QLineEdit* lpEdit, int nDefault, int nDigits)
{
    return append({lpAttr, lpEdit, HexUpper, upperHex(uint(nDefault), nDigits), nullptr, nDigits, {}, {}});
}

QString ZOR_FormBinding::storedValue(const Row& row)
{
    switch (row.kind) {
    case Check:
        return static_cast<QAbstractButton*>(row.lpWidget)->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    case Integer: return QString::number(static_cast<QSpinBox*>(row.lpWidget)->value());
    case Text: return static_cast<QLineEdit*>(row.lpWidget)->text();
    case Caption: {
        const QString qsCode = row.lpList ? row.lpList->currentCode(static_cast<QComboBox*>(row.lpWidget)) : QString();
        return qsCode.isEmpty() ? row.qsDefault : qsCode;
    }
    case Index: return QString::number(qMax(0, static_cast<QComboBox*>(row.lpWidget)->currentIndex()));
    case Hex: {
        bool ok = false;
        const int n = hexToInt(static_cast<QLineEdit*>(row.lpWidget)->text(), &ok);
        return QStringLiteral("%1").arg(uint(ok ? n : 0), row.nDigits, 16, QLatin1Char('0'));
    }
    case HexUpper:
        return upperHex(
            upperHexValue(static_cast<QLineEdit*>(row.lpWidget)->text(), row.qsDefault, row.nDigits), row.nDigits);
    case Custom: return row.store ? row.store() : row.qsDefault;
    }
    return QString();
}

void ZOR_FormBinding::showValue(const Row& row, const QString& qsValue)
{
    const QString& v = qsValue.isEmpty() ? row.qsDefault : qsValue;
    switch (row.kind) {
    case Check: static_cast<QAbstractButton*>(row.lpWidget)->setChecked(toInt(v) != 0); break;
    case Integer: {
        // A spin box redraws its text even for the value it holds; every
        // load sets every row twice (defaults, then the file).
        auto spin = static_cast<QSpinBox*>(row.lpWidget);
        const int n = qBound(spin->minimum(), toInt(v), spin->maximum());
        if (spin->value() != n)
            spin->setValue(n);
        break;
    }
    case Text: {
        auto edit = static_cast<QLineEdit*>(row.lpWidget);
        if (edit->text() != v)
            edit->setText(v);
        break;
    }
    case Caption:
        if (row.lpList)
            row.lpList->selectOr(static_cast<QComboBox*>(row.lpWidget), v, row.qsDefault);
        break;
    case Index: {
        auto box = static_cast<QComboBox*>(row.lpWidget);
        const int n = toInt(v);
        box->setCurrentIndex(n >= 0 && n < box->count() ? n : toInt(row.qsDefault));
        break;
    }
    case Hex: {
        bool ok = false;
        const int n = hexToInt(v, &ok);
        static_cast<QLineEdit*>(row.lpWidget)
            ->setText(QStringLiteral("%1").arg(uint(ok ? n : 0), row.nDigits, 16, QLatin1Char('0')));
        break;
    }
    case HexUpper:
        static_cast<QLineEdit*>(row.lpWidget)
            ->setText(upperHex(upperHexValue(v, row.qsDefault, row.nDigits), row.nDigits));
        break;
    case Custom:
        if (row.show)
            row.show(v);
        break;
    }
}

void ZOR_FormBinding::setDefaults()
{
    for (const Row& row : m_rows)
        showValue(row, QString());
}

void ZOR_FormBinding::setEnabled(bool bEnabled)
{
    for (const Row& row : m_rows)
        row.lpWidget->setEnabled(bEnabled);
}

void ZOR_FormBinding::read(CXMLWorkData* lpNode)
{
    ZOR_ConfigProblems* lpProblems = lpNode ? ZOR_ConfigProblems::active() : nullptr;
    for (const Row& row : m_rows) {
        QString qsValue;
        if (lpNode)
            lpNode->readString(row.attr.constData(), QString(), qsValue);
        showValue(row, qsValue);
        if (lpProblems)
            lpProblems->noteRow(lpNode->getTag(), row.attr, row, qsValue);
    }
}

void ZOR_FormBinding::write(CXMLWorkData* lpNode) const
{
    if (!lpNode)
        return;
    for (const Row& row : m_rows)
        lpNode->writeString(row.attr.constData(), storedValue(row));
}

void ZOR_FormBinding::readNode(CXMLWorkData* lpParent, const QString& qsName)
{
    auto node = ZOR_SettingsNode::openForRead(lpParent, qsName);
    read(node.get());
}

void ZOR_FormBinding::writeNode(CXMLWorkData* lpParent, const QString& qsName) const
{
    auto node = ZOR_SettingsNode::openForWrite(lpParent, qsName);
    write(node.get());
    node->writeParameters();
}
