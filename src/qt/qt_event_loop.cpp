#include "qt/qt_event_loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <thread>

namespace ketrel {

QtEventLoop::QtEventLoop(QObject* parent) : QObject(parent), sched_(clock_) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] { runDue(); });
    // Handlers post timers from anywhere (clicks, serial events); the deadline is set again
    // each time before the thread goes to sleep.
    if (auto* dispatcher = QAbstractEventDispatcher::instance(QThread::currentThread())) {
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { rearm(); });
        connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] { rearm(); });
    }
}

void QtEventLoop::runDue() {
    sched_.runDue();
    rearm();
}

void QtEventLoop::rearm() {
    auto next = sched_.nextDue();
    if (!next) {
        timer_.stop();
        return;
    }
    if (timer_.isActive() && armedFor_ == *next) return;
    armedFor_ = *next;
    std::int64_t waitMicros = *next - clock_.nowMicros();
    // Rounded up: a timer that fires early would find nothing due and spin.
    int ms = waitMicros <= 0 ? 0 : int((waitMicros + 999) / 1000);
    timer_.start(ms);
}

void QtEventLoop::pump() {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    sched_.runDue();
    rearm();
}

void QtEventLoop::waitAndPump() {
    rearm();
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    sched_.runDue();
    rearm();
}

void QtEventLoop::sleep(int ms) {
    if (ms > 0) std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

}  // namespace ketrel
