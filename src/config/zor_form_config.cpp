#include "config/zor_form_config.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTableWidget>
#include <QTreeWidget>

ZOR_Form_Config::ZOR_Form_Config(QWidget* parent)
    : QWidget(parent)
{
}

void ZOR_Form_Config::watchEdits(QWidget* lpRoot)
{
    if (!lpRoot)
        return;
    auto edited = [this] { emit signal_FormEdited(); };
    const QList<QWidget*> widgets = lpRoot->findChildren<QWidget*>();
    for (QWidget* w : widgets) {
        if (auto b = qobject_cast<QAbstractButton*>(w)) {
            if (b->isCheckable())
                connect(b, &QAbstractButton::toggled, this, edited);
        } else if (auto s = qobject_cast<QSpinBox*>(w)) {
            connect(s, QOverload<int>::of(&QSpinBox::valueChanged), this, edited);
        } else if (auto d = qobject_cast<QDoubleSpinBox*>(w)) {
            connect(d, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, edited);
        } else if (auto c = qobject_cast<QComboBox*>(w)) {
            connect(c, QOverload<int>::of(&QComboBox::currentIndexChanged), this, edited);
            if (c->isEditable())
                connect(c, &QComboBox::editTextChanged, this, edited);
        } else if (auto e = qobject_cast<QLineEdit*>(w)) {
            // Line edits inside spin and combo boxes are covered by their owners.
            if (!qobject_cast<QAbstractSpinBox*>(e->parentWidget()) && !qobject_cast<QComboBox*>(e->parentWidget()))
                connect(e, &QLineEdit::textChanged, this, edited);
        } else if (auto p = qobject_cast<QPlainTextEdit*>(w)) {
            connect(p, &QPlainTextEdit::textChanged, this, edited);
        } else if (auto t = qobject_cast<QTreeWidget*>(w)) {
            connect(t, &QTreeWidget::itemChanged, this, edited);
        } else if (auto tw = qobject_cast<QTableWidget*>(w)) {
            connect(tw, &QTableWidget::itemChanged, this, edited);
        }
    }
}
