// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A spin box that takes whole numbers only as digits.
#pragma once

#include <QSpinBox>

/// The toolkit leaves out the sign that stands between thousands, so that somebody who types
/// "1,5" would save 15. Here it cannot be typed or pasted, as other signs cannot.
class WholeEdit : public QSpinBox
{
    Q_OBJECT

public:
    using QSpinBox::QSpinBox;

protected:
    QValidator::State validate(QString &input, int &pos) const override;
};
