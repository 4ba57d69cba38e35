// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A prompt for one name.
#pragma once

#include <QDialog>

#include <memory>

namespace Ui
{
class chooseNameForm;
}

/// Asks for a name. It is shown, never run with exec(): callers connect its accepted() signal
/// and read getName() there. The text stays from one use to the next unless a caller clears it.
class chooseNameForm : public QDialog
{
    Q_OBJECT

public:
    explicit chooseNameForm(QWidget *parent = nullptr);
    ~chooseNameForm() override;

    QString getName() const;
    void clearName();
    void setName(QString name);

protected:
    void showEvent(QShowEvent *event) override;

private:
    const std::unique_ptr<Ui::chooseNameForm> ui;
};
