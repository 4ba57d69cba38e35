// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: message boxes, progress dialog, name prompt, About box.
#include "app/Tavenor.h"

#include "app/tavenor_progress.h"
#include "model/values.h"
#include "ui_Tavenor.h"
#include "widgets/AboutForm.h"
#include "widgets/chooseNameForm.h"
#include "widgets/progressBarForm.h"

#include <QApplication>
#include <QEventLoop>

#include <limits>

namespace
{

const QString ProgramTitle = QStringLiteral("DB Administration Tool");

// Shorter operations end before a person could read the dialog.
constexpr qint64 ShowAfterMilliseconds = 250;
// Often enough for smooth painting, seldom enough to cost nothing: a bar paints itself at every
// new value.
constexpr qint64 PaintEveryMilliseconds = 20;

// A dialog without a parent would come up in the middle of the screen, wherever the window is.
void placeOver(const QWidget &window, QWidget &dialog)
{
    if (window.isVisible()) {
        dialog.move(window.frameGeometry().center() - dialog.rect().center());
    }
}

/// Swallows shortcuts while the progress dialog is in front. The toolkit looks for them in the
/// active window, which is the one behind the dialog as long as that is not on the screen: Esc or
/// Ctrl+O would begin something else in the middle of an operation.
class HeldShortcuts : public QObject
{
protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isHeld =
            event->type() == QEvent::Shortcut &&
            qobject_cast<progressBarForm *>(QApplication::activeModalWidget()) != nullptr;
        return isHeld || QObject::eventFilter(watched, event);
    }
};

} // namespace

void Tavenor::makeDialogs()
{
    messageBox = new QMessageBox(this);
    messageBox->setWindowTitle(ProgramTitle);
    messageBox->setTextFormat(Qt::PlainText);

    nameForm = std::make_unique<chooseNameForm>();
    nameForm->setWindowModality(Qt::ApplicationModal);
    nameForm->hide();

    progressForm = std::make_unique<progressBarForm>();
    progressForm->setWindowModality(Qt::ApplicationModal);
    progressForm->hide();

    aboutForm = new AboutForm(this);
    aboutForm->setModal(true);
    aboutForm->setTitle(ProgramTitle);
    aboutForm->setVersion(QStringLiteral(TAVENOR_VERSION));
    aboutForm->setAuthor(QStringLiteral(TAVENOR_DEVELOPER));
}

void Tavenor::about()
{
    aboutForm->show();
}

void Tavenor::warn(const QString &text)
{
    // Nobody may be kept waiting by a box while a transaction is open; the step is done
    // again with its messages.
    if (db && db->isQuiet()) {
        db->noteFailure();
        return;
    }
    messageBox->setIcon(QMessageBox::Warning);
    messageBox->setText(text);
    messageBox->exec();
}

void Tavenor::inform(const QString &text)
{
    messageBox->setIcon(QMessageBox::Information);
    messageBox->setText(text);
    messageBox->exec();
}

bool Tavenor::confirm(const QString &text)
{
    QMessageBox box(this);
    box.setWindowTitle(ProgramTitle);
    box.setTextFormat(Qt::PlainText);
    box.setIcon(QMessageBox::Warning);
    box.setText(text);
    box.setStandardButtons(QMessageBox::No | QMessageBox::Yes);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void Tavenor::askName(const QString &suggestion, void (Tavenor::*continuation)())
{
    disconnect(nameForm.get(), &QDialog::accepted, this, nullptr);
    nameForm->clearName();
    nameForm->setName(suggestion);
    connect(nameForm.get(), &QDialog::accepted, this, [this, continuation] {
        // First: the continuation may ask for a name itself.
        disconnect(nameForm.get(), &QDialog::accepted, this, nullptr);
        (this->*continuation)();
    });
    placeOver(*this, *nameForm);
    nameForm->show();
}

void Tavenor::updateProgress(int done, int total)
{
    reached = done;
    toReach = total;
    keepPainting();
}

void Tavenor::keepPainting()
{
    if (operationRunning && sincePaint.elapsed() < PaintEveryMilliseconds) {
        return;
    }
    progressForm->setProgressValue(Values::percent(reached, toReach));
    const bool offScreen = progressForm->testAttribute(Qt::WA_DontShowOnScreen);
    if (operationRunning && offScreen && sinceStart.elapsed() > ShowAfterMilliseconds) {
        progressForm->hide();
        progressForm->setAttribute(Qt::WA_DontShowOnScreen, false);
        progressForm->setUpdatesEnabled(true);
        progressForm->show();
    }
    QEventLoop().processEvents();
    sincePaint.start();
}

void Tavenor::updateValueProgress(qint64 done, qint64 total)
{
    const qint64 scale = total / std::numeric_limits<int>::max() + 1;
    updateProgress(int(done / scale), int(total / scale));
}

void Tavenor::prepareProgress(const QString &title, const QString &text)
{
    reached = 0;
    progressForm->setProgressValue(0);
    progressForm->setProgressText(text);
    progressForm->setTitle(title);
}

Tavenor::Progress::Progress(Tavenor &window, const QString &title, const QString &text)
    : owner(window)
    , insideAnother(window.operationRunning)
{
    owner.prepareProgress(title, text);
    owner.sincePaint.start();
    if (insideAnother) {
        return;
    }
    owner.operationRunning = true;
    heldShortcuts = std::make_unique<HeldShortcuts>();
    qApp->installEventFilter(heldShortcuts.get());
    // An operation before may have left it up.
    owner.progressForm->hide();
    owner.sinceStart.start();
    owner.progressForm->setHeld(true);
    placeOver(owner, *owner.progressForm);
    owner.progressForm->setAttribute(Qt::WA_DontShowOnScreen, true);
    // A bar paints itself at every new value, also where nobody sees it.
    owner.progressForm->setUpdatesEnabled(false);
    owner.progressForm->show();
}

Tavenor::Progress::~Progress()
{
    if (insideAnother) {
        return;
    }
    owner.operationRunning = false;
    owner.progressForm->setHeld(false);
    owner.progressForm->hide();
    owner.progressForm->setAttribute(Qt::WA_DontShowOnScreen, false);
    owner.progressForm->setUpdatesEnabled(true);
    owner.progressForm->setProgressValue(Values::percent(owner.reached, owner.toReach));
    if (leftUp) {
        owner.progressForm->show();
    }
}
