// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One column on the calculator page.
#pragma once

#include <QWidget>

#include <memory>

namespace Ui
{
class calcForm;
}

/// A line with a column's name, its sum, and a switch that says whether the sum counts
/// positively, negatively or not at all in the grand total.
class calcForm : public QWidget
{
    Q_OBJECT

public:
    explicit calcForm(QWidget *parent = nullptr);
    ~calcForm() override;

    /// The column's complete name; people see its label.
    void setField(QString fieldName);
    QString getFieldName() const { return fieldName; }

    /// "MONEYFORMAT" makes this a sum of money; any other format changes nothing.
    void setFormat(QString format);

    /// What the column does to the grand total: 0 it is added, 1 subtracted, 2 left out.
    int mode() const;

    /// Makes the sum shown "0".
    void reset();

    /// Adds to the sum that is shown, which is rounded to the decimals shown.
    void add(double value);

    /// Shows a sum that was made elsewhere.
    void showResult(const QString &text);

    /// The width that the label wants; very long labels are shortened within a width of their
    /// own.
    int labelWidthHint() const;

    /// The width of the label's column, so that all lines of the page stand under each other.
    void setLabelWidth(int width);

    /// For the last one of a page, which draws its own line between the sums and their total.
    void hideLine();

    /// The width of the sums' column, the same on all lines.
    static int resultWidth(const QFont &font);

private:
    void nameControls();

    const std::unique_ptr<Ui::calcForm> ui;
    QString fieldName;
    bool isMoney = false;
};
