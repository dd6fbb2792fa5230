// A form of which at most one stands open. It goes by itself when it is closed; the next one starts anew.
#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

template <class Form> class Einzelform {
public:
    Einzelform() = default;
    Einzelform(const Einzelform&) = delete;
    Einzelform& operator=(const Einzelform&) = delete;
    ~Einzelform() { delete form_; }

    /// Brings the open form to the front; where there is none, `machen` gives a new one.
    template <class Macher> void zeigen(Macher machen) {
        if (!form_ || form_->isHidden()) {
            delete form_; // closed just now
            std::unique_ptr<Form> neue = machen();
            neue->setAttribute(Qt::WA_DeleteOnClose);
            form_ = neue.release();
        }
        form_->setWindowState(form_->windowState() & ~Qt::WindowMinimized);
        form_->show();
        form_->raise();
        form_->activateWindow();
    }

private:
    QPointer<Form> form_;
};
