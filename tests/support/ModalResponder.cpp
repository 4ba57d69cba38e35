// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Answers and records the modal boxes and file dialogs that the tested code shows.
#include "tests/support/ModalResponder.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <algorithm>
#include <memory>

namespace
{

constexpr int Interval = 2;

/// The box or file dialog that waits for an answer, the one on top first.
QDialog *waitingDialog()
{
    const auto fits = [](QWidget *widget) {
        return widget != nullptr && widget->isVisible() &&
               (qobject_cast<QMessageBox *>(widget) != nullptr ||
                qobject_cast<QFileDialog *>(widget) != nullptr);
    };
    QWidget *const active = QApplication::activeModalWidget();
    if (fits(active)) {
        return static_cast<QDialog *>(active);
    }
    const QWidgetList widgets = QApplication::topLevelWidgets();
    const auto found = std::find_if(widgets.begin(), widgets.end(), fits);
    return found == widgets.end() ? nullptr : static_cast<QDialog *>(*found);
}

/// Queued, because a timer does not fire again inside its own slot: a dialog that comes up
/// out of the answer to this one would wait for ever.
void closeLater(QDialog &dialog, const char *slot)
{
    QMetaObject::invokeMethod(&dialog, slot, Qt::QueuedConnection);
}

void fail(const QString &message)
{
    QTest::qFail(qPrintable(message), __FILE__, __LINE__);
}

ModalResponder::Box recordOf(const QMessageBox &box)
{
    const auto standard = [&box](QAbstractButton *button) { return box.standardButton(button); };
    ModalResponder::Box record;
    record.title = box.windowTitle();
    record.text = box.text();
    record.icon = box.icon();
    record.buttons = box.standardButtons();
    record.defaultButton = standard(box.defaultButton());
    record.escapeButton = standard(box.escapeButton());
    record.textFormat = box.textFormat();
    return record;
}

QLineEdit *nameLine(const QFileDialog &dialog)
{
    return dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
}

ModalResponder::FileDialog recordOf(const QFileDialog &dialog)
{
    ModalResponder::FileDialog record;
    record.caption = dialog.windowTitle();
    record.directory = dialog.directory().absolutePath();
    record.nameFilters = dialog.nameFilters();
    record.proposedName = nameLine(dialog)->text();
    record.saving = dialog.acceptMode() == QFileDialog::AcceptSave;
    record.several = dialog.fileMode() == QFileDialog::ExistingFiles;
    return record;
}

/// One name as it stands; several in the quotes that the dialog itself would put.
QString typedNames(const QStringList &files)
{
    if (files.size() == 1) {
        return files.first();
    }
    return QLatin1Char('"') + files.join(QLatin1String("\" \"")) + QLatin1Char('"');
}

} // namespace

ModalResponder::ModalResponder()
{
    connect(&timer, &QTimer::timeout, this, &ModalResponder::respond);
    timer.start(Interval);
}

ModalResponder::~ModalResponder()
{
    if (isStrict && !answers.isEmpty()) {
        fail(QStringLiteral("%1 expected dialog(s) did not come").arg(answers.size()));
    }
}

void ModalResponder::answer(QMessageBox::StandardButton button, const Look &look)
{
    answers.enqueue({Answer::Kind::Button, button, look, {}});
}

void ModalResponder::pressEscape()
{
    answers.enqueue({Answer::Kind::Escape, QMessageBox::NoButton, {}, {}});
}

void ModalResponder::pressReturn()
{
    answers.enqueue({Answer::Kind::Return, QMessageBox::NoButton, {}, {}});
}

void ModalResponder::chooseFile(const QString &path)
{
    chooseFiles({path});
}

void ModalResponder::chooseFiles(const QStringList &paths)
{
    answers.enqueue({Answer::Kind::Files, QMessageBox::NoButton, {}, paths});
}

void ModalResponder::cancelFileDialog()
{
    answers.enqueue({Answer::Kind::CancelFiles, QMessageBox::NoButton, {}, {}});
}

QStringList ModalResponder::takeTexts()
{
    QStringList texts;
    for (; takenBoxes < shownBoxes.size(); ++takenBoxes) {
        texts.append(shownBoxes.at(takenBoxes).text);
    }
    return texts;
}

void ModalResponder::respond()
{
    QDialog *const dialog = waitingDialog();
    if (dialog == nullptr || answered.contains(dialog)) {
        return;
    }
    markAnswered(*dialog);
    if (auto *const box = qobject_cast<QMessageBox *>(dialog)) {
        respondTo(*box);
    } else {
        respondTo(static_cast<QFileDialog &>(*dialog));
    }
}

/// Until it has closed. A box that is kept and shown again, perhaps at once, needs an answer
/// each time.
void ModalResponder::markAnswered(QDialog &dialog)
{
    answered.append(&dialog);
    const auto closing = std::make_shared<QMetaObject::Connection>();
    *closing = connect(&dialog, &QDialog::finished, this, [this, &dialog, closing] {
        answered.removeAll(&dialog);
        disconnect(*closing);
    });
}

void ModalResponder::respondTo(QMessageBox &box)
{
    if (qobject_cast<QFileDialog *>(box.parentWidget()) != nullptr) {
        settleOwnQuestion(box);
        return;
    }
    shownBoxes.append(recordOf(box));
    if (answers.isEmpty() && otherAnswer != QMessageBox::NoButton) {
        answer(otherAnswer);
    }
    if (answers.isEmpty() || !apply(answers.dequeue(), box)) {
        surprise(QStringLiteral("box: ") + box.text(), box);
    }
}

bool ModalResponder::apply(const Answer &answer, QMessageBox &box)
{
    if (answer.look) {
        answer.look(box);
    }
    switch (answer.kind) {
    case Answer::Kind::Button:
        if (box.button(answer.button) == nullptr) {
            return false;
        }
        QMetaObject::invokeMethod(box.button(answer.button), "click", Qt::QueuedConnection);
        return true;
    case Answer::Kind::Escape:
        QTimer::singleShot(0, &box, [&box] { QTest::keyClick(&box, Qt::Key_Escape); });
        return true;
    case Answer::Kind::Return:
        QTimer::singleShot(0, &box, [&box] { QTest::keyClick(&box, Qt::Key_Return); });
        return true;
    case Answer::Kind::Files:
    case Answer::Kind::CancelFiles:
        break;
    }
    return false;
}

void ModalResponder::respondTo(QFileDialog &dialog)
{
    shownFileDialogs.append(recordOf(dialog));
    const Answer answer = answers.isEmpty() ? Answer() : answers.dequeue();
    if (answer.kind == Answer::Kind::Files) {
        nameLine(dialog)->setText(typedNames(answer.files));
        closeLater(dialog, "accept");
    } else if (answer.kind == Answer::Kind::CancelFiles) {
        closeLater(dialog, "reject");
    } else {
        surprise(QStringLiteral("file dialog: ") + dialog.windowTitle(), dialog);
    }
}

/// A box of the file dialog itself: yes to replacing a file; anything else means that the
/// dialog does not take the file, so both are closed.
void ModalResponder::settleOwnQuestion(QMessageBox &box)
{
    if (QAbstractButton *const yes = box.button(QMessageBox::Yes)) {
        QMetaObject::invokeMethod(yes, "click", Qt::QueuedConnection);
        return;
    }
    auto *const dialog = static_cast<QDialog *>(box.parentWidget());
    surprise(QStringLiteral("file dialog refuses: ") + box.text(), box);
    closeLater(*dialog, "reject");
}

void ModalResponder::surprise(const QString &what, QDialog &dialog)
{
    surprises.append(what);
    if (isStrict) {
        fail(QStringLiteral("Unexpected ") + what);
    }
    closeLater(dialog, "reject");
}
