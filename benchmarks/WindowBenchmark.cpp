// window-benchmark CARD SECONDS: starts as the program does with one card, and prints the milliseconds from the start
// of the process (microseconds since 1970 in the variable STARTED_AT) until the list is painted with its rows; 0
// seconds ends there. Else it scrolls the list and resizes the window for so long while thumbnails and telemetry load,
// and prints how late events were handled on the interface thread. benchmarks/window.sh runs it.

#include "app/CardApplication.h"

#include <QApplication>
#include <QListView>
#include <QScrollBar>
#include <QSocketNotifier>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto probeInterval = std::chrono::milliseconds(10);

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// What this thread has had of the processor.
double processorMilliseconds()
{
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

double millisecondsSinceStart()
{
    const char* text = std::getenv("STARTED_AT");
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return text ? std::chrono::duration<double, std::milli>(now).count() - std::atof(text) / 1000 : -1;
}

/// The list that holds this viewport, when it is one of rows that can be seen.
QListView* listOf(QObject* viewport)
{
    auto* list = viewport ? qobject_cast<QListView*>(viewport->parent()) : nullptr;
    return list && list->viewport() == viewport && list->isVisible() && list->model() && list->model()->rowCount() > 0
               ? list
               : nullptr;
}

/// Times every event that the event loop delivers.
class WatchedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    struct Slow
    {
        double milliseconds;
        double processorMilliseconds; ///< less when other threads and programs had the processor meanwhile
        QByteArray receiver;
        QEvent::Type type;
    };

    std::function<void(QListView*)> shown; ///< called once, after the event that painted the list's rows
    bool isRecording = false;
    std::vector<Slow> slowest; ///< the longest event last

    bool notify(QObject* receiver, QEvent* event) override
    {
        const bool isOutermost = m_depth++ == 0;
        const auto start = Clock::now();
        const double processorStart = processorMilliseconds();
        const bool timed = isOutermost && isRecording;
        // The event may take its receiver with it.
        const QByteArray name = timed ? QByteArray(receiver->metaObject()->className()) : QByteArray();
        const QEvent::Type type = event->type();
        const bool result = QApplication::notify(receiver, event);
        --m_depth;
        if (shown && type == QEvent::Paint && !m_painted)
            m_painted = listOf(receiver);
        if (timed)
            record({millisecondsSince(start), processorMilliseconds() - processorStart, name, type});
        // By now the backing store has been handed to the display.
        if (isOutermost && m_painted && shown)
            std::exchange(shown, {})(m_painted);
        return result;
    }

private:
    void record(const Slow& slow)
    {
        const auto place = std::upper_bound(slowest.begin(), slowest.end(), slow, [](const Slow& a, const Slow& b) {
            return a.milliseconds < b.milliseconds;
        });
        slowest.insert(place, slow);
        if (slowest.size() > 10)
            slowest.erase(slowest.begin());
    }

    int m_depth = 0;
    QListView* m_painted = nullptr;
};

/// Sends the interface thread something every few milliseconds, from outside through a pipe, as input arrives, and as a
/// posted event, as results arrive, and notes how late each is handled.
class Probe : public QObject
{
public:
    std::vector<double> delays; ///< milliseconds

    Probe()
    {
        if (pipe(m_pipe) != 0)
            qFatal("no pipe");
        m_notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
        connect(m_notifier, &QSocketNotifier::activated, this, &Probe::readPipe);
        m_thread = std::thread([this] {
            auto next = Clock::now();
            while (!m_stop) {
                const Clock::time_point sent = Clock::now();
                if (write(m_pipe[1], &sent, sizeof(sent)) != sizeof(sent))
                    qFatal("the pipe is full");
                QMetaObject::invokeMethod(
                    this, [this, sent] { delays.push_back(millisecondsSince(sent)); }, Qt::QueuedConnection);
                next += probeInterval;
                std::this_thread::sleep_until(next);
            }
        });
    }

    ~Probe() override
    {
        m_stop = true;
        m_thread.join();
        close(m_pipe[0]);
        close(m_pipe[1]);
    }

private:
    void readPipe()
    {
        Clock::time_point sent;
        if (read(m_pipe[0], &sent, sizeof(sent)) == sizeof(sent))
            delays.push_back(millisecondsSince(sent));
    }

    int m_pipe[2] = {-1, -1};
    QSocketNotifier* m_notifier = nullptr;
    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};

/// Turns the wheel steadily. Every second jumps to another part of the list, whose thumbnails nobody has asked for yet,
/// and makes the window another size, so that frames are painted scaled until new ones come.
void scroll(QListView* list, int step)
{
    QScrollBar* bar = list->verticalScrollBar();
    if (step % 60 == 59) {
        bar->setValue(static_cast<int>(bar->maximum() * (step / 60 * 7 % 20 / 20.0)));
        return;
    }
    if (step % 60 == 29) {
        list->window()->resize(step % 120 == 29 ? QSize(1280, 800) : QSize(1440, 900));
        return;
    }
    const QPointF middle = QRectF(list->viewport()->rect()).center();
    QWheelEvent wheel(middle, list->viewport()->mapToGlobal(middle), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(list->viewport(), &wheel);
}

void report(Probe& probe, const WatchedApplication& application)
{
    std::vector<double>& delays = probe.delays;
    std::sort(delays.begin(), delays.end());
    const auto late = delays.end() - std::upper_bound(delays.begin(), delays.end(), 50.0);
    std::printf("probes %zu\nmedian %.2f\np99 %.2f\nlatest %.2f\nover-50ms %td\n", delays.size(),
                delays[delays.size() / 2], delays[delays.size() * 99 / 100], delays.back(), late);
    for (const WatchedApplication::Slow& slow : application.slowest)
        std::printf("event %.2f %.2f %s %d\n", slow.milliseconds, slow.processorMilliseconds, slow.receiver.constData(),
                    static_cast<int>(slow.type));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setApplicationName(u"cardreel"_s);
    QCoreApplication::setOrganizationName(u"Cardreel"_s);
    WatchedApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("usage: window-benchmark CARD SECONDS\n", stderr);
        return 2;
    }
    const int seconds = std::atoi(argv[2]);
    std::unique_ptr<Probe> probe;
    QTimer scrolling;
    int step = 0;
    application.shown = [&](QListView* list) {
        std::printf("list-shown %.1f\nrows %d\n", millisecondsSinceStart(), list->model()->rowCount());
        if (seconds == 0)
            return QCoreApplication::quit();
        application.isRecording = true;
        probe = std::make_unique<Probe>();
        QObject::connect(&scrolling, &QTimer::timeout, list, [list, &step] { scroll(list, step++); });
        scrolling.start(16);
        QTimer::singleShot(std::chrono::seconds(seconds), qApp, [&] {
            application.isRecording = false;
            scrolling.stop();
            report(*probe, application);
            probe.reset();
            QCoreApplication::quit();
        });
    };

    cardreel::setupDefaults();
    cardreel::CardApplication cardApplication(application);
    cardApplication.openAtStart({QString::fromLocal8Bit(argv[1])});
    return QApplication::exec();
}
