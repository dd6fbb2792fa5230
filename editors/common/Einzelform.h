// SPDX-License-Identifier: GPL-3.0-or-later
// A form of which at most one stands open. It goes by itself when it is closed; the next one starts anew.
#pragma once

#include "editors/common/Fenster.h"

#include <QPointer>
#include <QWidget>

#include <memory>

template <class Form> class Einzelform {
public:
    Einzelform() = default;
    Einzelform(const Einzelform&) = delete;
    Einzelform& operator=(const Einzelform&) = delete;
    ~Einzelform() { delete form_; }

    /// Brings the open form to the front; where there is none, `machen` gives a new one, or null for none.
    template <class Macher> void zeigen(Macher machen) {
        if (!offene()) {
            delete form_; // closed just now
            std::unique_ptr<Form> neue = machen();
            if (!neue)
                return;
            neue->setAttribute(Qt::WA_DeleteOnClose);
            form_ = neue.release();
        }
        nachVorn(*form_);
    }
    /// The open form, null if there is none.
    Form* offene() const { return form_ && !form_->isHidden() ? form_.data() : nullptr; }
    void schliessen() {
        if (auto* form = offene())
            form->close();
    }

private:
    QPointer<Form> form_;
};
