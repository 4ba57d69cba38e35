// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The progress window of long operations.
#pragma once

#include <QDialog>

#include <memory>

namespace Ui
{
class progressBarForm;
}

/// One window serves every long operation; each sets its texts before it shows the window.
class progressBarForm : public QDialog
{
    Q_OBJECT

public:
    explicit progressBarForm(QWidget *parent = nullptr);
    ~progressBarForm() override;

    void setProgressValue(int percent);

    /// What is being done, shown above the bar.
    void setProgressText(QString text);

    /// The caption of the window.
    void setTitle(QString title);

    /// While held, neither Esc nor the close button hides the window: the operation that it
    /// stands for would go on unseen, with the program open to input. Code can always hide it.
    void setHeld(bool on) { held = on; }
    bool isHeld() const { return held; }

public slots:
    void reject() override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    const std::unique_ptr<Ui::progressBarForm> ui;
    bool held = false;
};
