// The application object: an exception that a handler lets through ends that handler, not the process.
#pragma once

#include <QApplication>

class Anwendung final : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject* empfaenger, QEvent* ereignis) override;
};
