// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One field of a record to be entered, or to be compared with by a filter.
#pragma once

#include "model/filters.h"
#include "model/formats.h"

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <QWidget>

#include <array>
#include <functional>
#include <memory>

class ImageBox;
class QMessageBox;
class QPushButton;
class SwitchButton;

namespace Ui
{
class inputDataForm;
}

/// Edits one value with the editor that its format asks for. As a condition of a filter it also
/// holds a comparison, a joining word and whether the field takes part.
///
/// The setters of label, column, folders and choices come before the value. Filling an editor
/// switches the condition on, as every change of it does; who fills it calls clearCondition()
/// afterwards, or sets the condition that belongs to the value.
class inputDataForm : public QWidget
{
    Q_OBJECT

public:
    explicit inputDataForm(QWidget *parent = nullptr);
    ~inputDataForm() override;

    /// The text beside the editor, shown as given.
    void setLabel(const QString &label);
    QString label() const;

    /// The stored name of the column. A required one is marked by an asterisk.
    void setColumnName(const QString &column);
    QString columnName() const { return column; }

    /// Shows the editor of `format`, a short format word such as "MONEY", filled with the stored
    /// `value`. The field counts as untouched afterwards. A reference editor chooses by the
    /// leading whole number, whatever the format.
    void setValue(const QString &format, const QVariant &value);

    /// The format last given to setValue().
    QString format() const { return formatName; }

    /// Makes this the editor of a reference: "---" and one line per record, each with its Id.
    void setChoices(const QVector<QPair<int, QString>> &choices);

    /// Chooses the record whose Id is the leading whole number of `stored` ("12", 12, "12 Rossi"),
    /// else "---". The field counts as untouched afterwards.
    void setReferenceValue(const QVariant &stored);

    /// The Id chosen in a reference editor; 0 for "---".
    int chosenId() const;

    /// The lines that a "LINK" editor offers after "---".
    void setLinkChoices(const QStringList &lines);

    /// The text that is saved and compared, its quotes doubled. An untouched field gives back the
    /// stored text. A touched number that cannot be read counts as 0, and while the field is
    /// active each call says so in a message box: a save asks exactly once per field.
    QString valueText() const;

    /// The same text with its quotes as they are, and never a message.
    QString rawText() const;

    /// leData read as a number; 0 when it is none, with a message box while the field is active.
    double numericValue() const;

    /// False when valueText() would have to read a text that is no number.
    bool numberIsValid() const;

    /// True once a person has changed the value since it was set.
    bool isTouched() const { return isChanged; }

    /// The folder of the database, with its final "/".
    void setBasePath(const QString &folder);

    /// The folder of the record's attachments, relative to the base path.
    void setAttachmentFolder(const QString &folder) { attachmentFolder = folder; }

    /// Asked for that folder at the moment when a file is attached, while none is set.
    void setAttachmentFolderSource(std::function<QString()> source);

    /// Shows the buttons of a condition, or hides them.
    void setFilterRole(bool on);

    /// "Equal", "Disequal", "Major", "Minor", or "NoCondition".
    QString conditionName() const;

    /// Checks the button of the condition called `name`, in any letter case; any other text means
    /// no condition, and the field no longer takes part.
    void setConditionName(const QString &name);

    /// True while the field takes part in the filter.
    bool isActive() const { return active; }
    void setActive(bool on);

    /// Whether there is a condition before this one that the joining word joins it to; pales the
    /// word otherwise. It can be chosen all the same.
    void setJoins(bool on);

    /// The field no longer takes part and has no condition; its value stays.
    void clearCondition();

    /// How the condition is joined to those before it: "And" or "Or".
    QString joiningWord() const;

    /// Any word but "And" (in any letter case) means "Or".
    void setJoiningWord(const QString &word);

    /// Marks the condition as set by a jump along a link, so that a link's texts are compared.
    /// The next change by hand takes the mark away, and so does a new value.
    void setFollowsLink(bool on) { followsLink = on; }

    /// Everything that the condition holds, to be kept or put into another form.
    Filters::Setting setting() const;

    /// Takes value, comparison, joining word and the rest from `setting`, whose column is not
    /// looked at. A format that is none of the program's shows the editor of this column.
    void setSetting(const Filters::Setting &setting);

    /// The condition, its value read, for columns of `format`; asks and says nothing.
    Filters::Condition condition(const QString &format) const;

    /// True when a record's value, its quotes doubled, passes; `format` is the column's. A field
    /// that does not take part lets everything pass.
    bool match(const QString &format, const QVariant &value) const;

    /// The editor that is shown; null for a format without one.
    QWidget *editor() const;
    void focusEditor();

    /// The width that the label wants; very long labels wrap within a width of their own.
    int labelWidthHint() const;

    /// The width of the label's column, so that all fields of a page stand in one line.
    void setLabelWidth(int width);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// A person changed the value. Filling the editor does not send this.
    void touched();
    /// The field begins or ceases to take part in the filter.
    void activeChanged();

public slots:
    void viewImageBox();
    void addPdf();
    void setNewImage(QString fileName);
    void activated();
    void cbActivated(int pos);
    void activatedByButton();
    void deactivatedByButton();
    void intPlus();
    void intMinus();

protected:
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    enum class Editor { Line, LongText, Number, Whole, YesNo, Date, Link, Reference, File, None };

    void connectEditors();
    void connectConditions();
    void showEmphasis();
    void alignFirstLines();
    void nameControls();
    void describeEditor();

    Editor editorFor(const QString &format) const;
    void showEditor(Editor shown);
    void limitToNumbers(bool on);
    void fillEditor(const QVariant &value);
    void showLine(const QString &text);
    void copyToLine();
    void copyToLongText();
    void noteChange();
    QString storedText() const;
    QString editorText() const;
    QString numberText(double number) const;
    bool hasNumberToRead() const;

    std::array<SwitchButton *, 7> switches() const;
    std::array<QPushButton *, 5> conditionButtons() const;
    void checkOnly(QPushButton *condition);
    QString comparedText() const;

    QString recordFolder() const;
    QStringList attachableSuffixes() const;
    void createImageBox();
    void attach(const QString &source);
    void pasteAttachment();
    void takeAttachment(const QString &path);
    void showAttachment();

    const std::unique_ptr<Ui::inputDataForm> ui;
    QMessageBox *const messageBox;
    ImageBox *imageBox = nullptr; // made for pictures only

    QString column;
    QString formatName;
    Formats::Kind kind = Formats::Kind::Other;
    Editor editorKind = Editor::Line;
    QString stored;
    bool isFilling = false;
    bool isChanged = false;
    bool active = false;
    bool joins = true;
    bool isCondition = false;
    bool followsLink = false;

    QString basePath;
    QString attachmentFolder;
    std::function<QString()> attachmentFolderSource;
    QString imagePath; // of a picture or a PDF, as it is stored
};
