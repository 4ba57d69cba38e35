// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Fields stacked on a page: their labels in one column.
#pragma once

#include <QtGlobal>

/// Gives the labels of all placed forms of a page the width of the widest.
template<typename List> void alignLabels(const List &forms)
{
    int width = 0;
    for (const auto *form : forms) {
        if (form->parentWidget() != nullptr) {
            width = qMax(width, form->labelWidthHint());
        }
    }
    for (auto *form : forms) {
        form->setLabelWidth(width);
    }
}
