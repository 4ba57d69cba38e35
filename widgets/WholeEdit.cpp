// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A spin box that takes whole numbers only as digits.
#include "widgets/WholeEdit.h"

QValidator::State WholeEdit::validate(QString &input, int &pos) const
{
    return input.contains(locale().groupSeparator()) ? QValidator::Invalid
                                                     : QSpinBox::validate(input, pos);
}
