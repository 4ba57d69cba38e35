// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Answers and records the modal boxes and file dialogs that the tested code shows.
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QQueue>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <functional>

class QDialog;
class QFileDialog;

/// While it lives, every QMessageBox and every QFileDialog (also of the static functions) is
/// answered from a timer, with the answers queued below, in their order, and recorded.
///
///     ModalResponder responder;
///     responder.answer(QMessageBox::Ok);
///     QVERIFY(!db.dropTable("missing"));
///     QCOMPARE(responder.takeTexts(), QStringList{"ERRORE: ..."});
///
/// A dialog without a queued answer, or with an answer that does not fit it, fails the running
/// test, is recorded in unexpected() and is dismissed, so that the test ends. Answers that are
/// left when the responder is destroyed fail the test too. The question whether an existing
/// file is replaced, which the file dialog itself asks, is answered with Yes and not recorded.
class ModalResponder : public QObject
{
    Q_OBJECT

public:
    /// What a message box showed.
    struct Box {
        QString title;
        QString text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QMessageBox::StandardButtons buttons = QMessageBox::NoButton;
        QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
        QMessageBox::StandardButton escapeButton = QMessageBox::NoButton;
        Qt::TextFormat textFormat = Qt::AutoText;
    };
    /// What a file dialog was asked for.
    struct FileDialog {
        QString caption;
        QString directory;
        QStringList nameFilters;
        QString proposedName; ///< what stands in the name line at first
        bool saving = false;  ///< asks for a file to write
        bool several = false; ///< accepts several files
    };
    using Look = std::function<void(const QMessageBox &)>;

    ModalResponder();
    ~ModalResponder() override;

    /// The next dialog is a box, answered with `button`; `look`, when given, is called while
    /// the box is still shown.
    void answer(QMessageBox::StandardButton button, const Look &look = {});
    /// Boxes that have no queued answer are answered with `button`, for tests that count what
    /// came instead of expecting it.
    void answerOthers(QMessageBox::StandardButton button) { otherAnswer = button; }
    /// The next dialog is a box, answered with the Esc key.
    void pressEscape();
    /// The next dialog is a box, answered with the Return key, so by its default button.
    void pressReturn();
    /// The next dialog is a file dialog, answered with this file (absolute path).
    void chooseFile(const QString &path);
    /// The next dialog is a file dialog, answered with these files (absolute paths).
    void chooseFiles(const QStringList &paths);
    /// The next dialog is a file dialog, which is cancelled.
    void cancelFileDialog();

    /// From now on a dialog without a queued answer is closed like any other, and answers may be
    /// left: for tests in which what is shown depends on chance.
    void allowAnything() { isStrict = false; }

    /// The boxes shown so far, in their order, the unexpected ones included.
    const QVector<Box> &boxes() const { return shownBoxes; }
    /// The texts of the boxes shown since the last call.
    QStringList takeTexts();
    /// The file dialogs shown so far, in their order, the unexpected ones included.
    const QVector<FileDialog> &fileDialogs() const { return shownFileDialogs; }
    /// One line for each dialog that had no fitting answer.
    const QStringList &unexpected() const { return surprises; }
    /// Number of queued answers that no dialog has used yet.
    int pending() const { return answers.size(); }

private:
    struct Answer {
        enum class Kind { Button, Escape, Return, Files, CancelFiles };
        Kind kind = Kind::Button;
        QMessageBox::StandardButton button = QMessageBox::NoButton;
        Look look;
        QStringList files;
    };

    void respond();
    void markAnswered(QDialog &dialog);
    void respondTo(QMessageBox &box);
    void respondTo(QFileDialog &dialog);
    void settleOwnQuestion(QMessageBox &box);
    bool apply(const Answer &answer, QMessageBox &box);
    void surprise(const QString &what, QDialog &dialog);

    QTimer timer;
    QQueue<Answer> answers;
    QMessageBox::StandardButton otherAnswer = QMessageBox::NoButton;
    QVector<QPointer<QDialog>> answered;
    QVector<Box> shownBoxes;
    QVector<FileDialog> shownFileDialogs;
    QStringList surprises;
    int takenBoxes = 0;
    bool isStrict = true;
};
