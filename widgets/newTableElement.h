// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One column of a table that is being designed.
#pragma once

#include "model/columns.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

namespace Ui
{
class newTableElement;
}

/// A numbered card: the column's label, format and whether it must be filled, or the field of
/// another table that it copies. The card of a sub-table holds further rows, one for each column
/// of the sub-table.
///
/// A row never reads the database. Its owner connects the signals first and then gives it the
/// tables, since setTables() already asks for the fields of the first one.
class newTableElement : public QWidget
{
    Q_OBJECT

public:
    /// What the column's label comes from.
    enum class Kind {
        Empty,  ///< nothing yet: the row describes no column
        Typed,  ///< typedLabel(), which a person wrote
        Link,   ///< the shown name of the table that the column leads to
        Copied, ///< the names of a table and of a field of it
    };

    explicit newTableElement(QWidget *parent = nullptr);
    ~newTableElement() override;

    /// The row's place among its owner's rows, from 1; shown in the card.
    void setNumber(int number);

    void setTableName(const QString &table);

    /// Takes away the choice of copying a field of another table.
    void hideInsertFromFrame();

    /// Offers tables whose fields can be copied (stored names) and tables to link to (shown
    /// names), without the program's own. Sends changeTable() for the first one.
    void setTables(const QStringList &allTables, const QStringList &linkTables);

    /// Offers these columns, the stored names of the table chosen in cbExistList, to be copied.
    void setExistingFields(const QStringList &columns);

    /// Sub-tables do not nest: their rows do not offer the format.
    void removeSubtableType();

    /// The column's stored name and SQL type; two empty texts when the row describes nothing.
    /// The name holds labels and table names as typed or shown: whether SQL can take them is
    /// for the owner to test.
    ColumnDefinition columnDefinition() const;

    /// The columns of the sub-table that a SUBTABLE row describes, the folder of attachments
    /// first. Rows that describe nothing are in the list too, as two empty texts.
    ColumnDefinitions subTableColumns() const;

    /// Deletes the rows of the sub-table.
    void clearSubElements();

    Kind kind() const;

    /// The label exactly as typed; empty unless kind() is Typed.
    QString typedLabel() const;

    /// True when the row is a SUBTABLE one, with or without a label.
    bool isSubTable() const;

    /// Which of the offered tables to link to is chosen, by its place in the list last given, the
    /// program's own not counted; -1 for none.
    int linkPlace() const;

    /// The rows of the sub-table, in order. A row that left SUBTABLE for LINK keeps them unseen.
    const QList<newTableElement *> &subRows() const { return subElements; }

    /// Gives the focus to the row's first editor, the label if it is shown, and scrolls the page
    /// to the row.
    void focusName();

    /// As narrow as with the choice of copying a field below the other controls.
    QSize minimumSizeHint() const override;

signals:
    void addNewElem();
    void changeTable(newTableElement *, QString table);

public slots:
    void sendNewAdd();
    void changeNewFieldType(bool on);
    void changeSelectedTable(QString table);
    void changeElementSelectedSubTable(newTableElement *nTe, QString table);
    void changeFieldType(QString selType);
    void addNewTableElement();

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void fillTypes();
    void connectEditors();
    void setTexts();
    void nameControls();
    void showLinkTargets(bool on);
    void dimNumber();
    void alignColumns();
    int widthWithoutSource() const;
    void placeSource();
    newTableElement *appendSubRow();
    void followInTabOrder(const newTableElement &before);

    const std::unique_ptr<Ui::newTableElement> ui;
    QString tableName;
    int number = 0;
    QStringList formats;
    QStringList sqlTypes;
    QStringList existFieldNames;
    int typeCount = 0;
    QList<newTableElement *> subElements;
    QStringList allTables;
    QStringList linkTables;
    bool isSubElement = false;
    bool isSourceBelow = false;
};
