// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A list of records to choose from, found by typing any part of a line.
#pragma once

#include <QComboBox>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

/// The first line is always "---", no choice. Tables of tens of thousands of records are
/// offered whole: the lines are filled in one go, and typing any part of a line, in any letter
/// case, lists those that contain it. What is typed only searches: on Enter or when the focus
/// leaves, the box shows the current choice again.
class ChoiceBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ChoiceBox(QWidget *parent = nullptr);

    /// Offers "---" and these records: Id and line. A line's item data is its Id.
    void setRecords(const QVector<QPair<int, QString>> &records);

    /// Offers "---" and these lines.
    void setLines(const QStringList &lines);

    /// Makes the record with this Id current, "---" when it is not offered.
    void chooseId(int id);

    /// Makes this line current, "---" for an empty one. A line that is not offered becomes a
    /// further choice, in the place of the previous further one.
    void chooseLine(const QString &line);

    /// The Id of the current record; 0 for "---" and for lines without Id.
    int chosenId() const { return currentData().toInt(); }

    /// The current line, empty for "---".
    QString chosenLine() const;

protected:
    void focusInEvent(QFocusEvent *event) override;

private:
    void prepareSearch();
    void fill(const QStringList &lines, const QVector<int> &ids);
    void dropFurtherChoice();
    void showChoice();

    int offered = 0; // lines given, "---" included; a further choice comes after them
};
