// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One field of a record as the record view shows it.
#pragma once

#include <QList>
#include <QVariant>
#include <QWidget>

#include <memory>
#include <utility>

class QLabel;
class QPushButton;

namespace Ui
{
class outputDataForm;
}

/// Shows the label and the value of one field in the way that its format asks for, and turns
/// clicks into hand-offs to the desktop or into requests to the window. It lives as long as
/// the view of one record. A receiver of its signals may delete it: each slot emits last.
/// It shows no messages: what cannot be opened or read does nothing and shows nothing.
class outputDataForm : public QWidget
{
    Q_OBJECT

public:
    explicit outputDataForm(QWidget *parent = nullptr);
    ~outputDataForm() override;

    /// Shows `label` as people read it (its duplicate marker cut out), or hides the label.
    void setTitle(bool show, QString label);

    /// The folder, with its final "/", that stored paths of attachments start from.
    void setBasePath(QString path) { basePath = std::move(path); }

    /// Shows or hides the button that goes to the linked record.
    void setXViewVisible(bool visible);

    /// Shows or hides the button that lists the records which refer to this one.
    void setLinkButtonVisible(bool visible);

    void setRecordId(int id) { recordId = id; }

    /// The record that the goToX() button leads to.
    void setLinkTarget(QString table, int id);

    /// The stored name of the table of the record shown.
    void setOwnerTable(QString table) { ownerTable = std::move(table); }

    /// The text of the record's title column; it is part of its sub-tables' names.
    void setRecordTitle(QString title) { recordTitle = std::move(title); }

    /// Shows `value` as `format`, a short format word such as "MONEY", asks for. A word that
    /// is not known shows the value as it is stored. The other setters come before this one.
    void setValue(QString format, QVariant value);

    /// Shows the preview of the picture at the stored path `path`, empty when it cannot be
    /// read or lies outside the base folder; or hides the preview.
    void setImagePreview(bool show, QString path);

    /// The width that the label wants; very long labels wrap within a width of their own.
    int labelWidthHint() const;

    /// The width of the label's column, so that all fields of a page stand in one line.
    void setLabelWidth(int width);

signals:
    void goToList(QString listName, int Id);
    void goToSubList(QString listName);
    void goToFilter(QString listName, int Id);

public slots:
    void viewImageBox();
    void viewPdf();
    void goToX();
    void sendMail();
    void callSubTable();
    void linkActivated(QString link);
    void callLink();

protected:
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void connectButtons();
    QList<QPushButton *> buttons() const;
    void hideValue();
    void alignFirstLines();
    void showText(const QString &text);
    void showLongText(const QString &text);
    void showYesNo(const QVariant &value);
    void showPicture(const QString &path);
    void showPdf(const QString &path);
    void showAddress(const QString &address);
    void showButton(QPushButton *button, const QString &iconName);
    void nameControls();
    void openAttachment(const QString &path) const;

    const std::unique_ptr<Ui::outputDataForm> ui;
    QString imagePath;
    QString pdfPath;
    QString linkTable;
    int linkId = 0;
    QString linkValue;
    int recordId = 0;
    QString ownerTable;
    QString recordTitle;
    QString basePath;
};
