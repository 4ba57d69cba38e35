// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One entry of the list of tables, or of saved filters.
#pragma once

#include <QIcon>
#include <QWidget>

#include <memory>

namespace Ui
{
class ListButtonForm;
}

/// A row with an icon and a name; pressing it anywhere makes the table current, or puts the
/// saved filter in force.
class ListButtonForm : public QWidget
{
    Q_OBJECT

public:
    explicit ListButtonForm(QWidget *parent = nullptr);
    ~ListButtonForm() override;

    /// Makes this the entry of the table stored as `name`; people see its display name.
    void setTableName(const QString &name);

    /// Makes this the entry of the saved filter `filterName` of the table stored as `table`.
    void setSavedFilter(const QString &table, const QString &filterName);

    void setIcon(const QIcon &icon);

    /// Marks the entry like a selected line, or takes the mark away.
    void setCurrent(bool on);
    bool isCurrent() const;

    QString tableName() const { return table; }

    /// Empty on the entry of a table, like savedFilterName().
    QString savedFilterTable() const { return filterTable; }
    QString savedFilterName() const { return filterName; }
    bool isFilter() const { return filter; }

signals:
    void changeList(QString lName);
    void changeListAndFilter(QString savedFilterTable, QString savedFilterName);

public slots:
    /// Announces the choice of this entry. A receiver may delete the entry.
    void pushed();

protected:
    void changeEvent(QEvent *event) override;

private:
    void updateNameColour();
    void setShownName(const QString &name, const QString &tip);

    const std::unique_ptr<Ui::ListButtonForm> ui;
    QString table;
    QString filterTable;
    QString filterName;
    bool filter = false;
};
