// SPDX-License-Identifier: GPL-3.0-or-later
// Shows a name that is too long for its field, or for its list, as the tool tip there.
#pragma once

class QComboBox;

/// For the names of `liste`, in its field and where it is open. Needs its view, which is not to be replaced.
void langeNamenZeigen(QComboBox& liste);
