// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The About box.
#pragma once

#include <QDialog>

#include <memory>

namespace Ui
{
class AboutForm;
}

/// Names the program, its version, its developer and the toolkit, with a link to the web site
/// of each of the two.
class AboutForm : public QDialog
{
    Q_OBJECT

public:
    explicit AboutForm(QWidget *parent = nullptr);
    ~AboutForm() override;

    void setTitle(QString title);
    void setVersion(QString version);
    void setAuthor(QString author);

public slots:
    /// Opens `link` with the desktop's handler for addresses.
    void linkActivated(QString link);

private:
    const std::unique_ptr<Ui::AboutForm> ui;
};
