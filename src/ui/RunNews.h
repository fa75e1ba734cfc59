#pragma once

#include <QElapsedTimer>
#include <QString>

class QWidget;

namespace Sonmira {

// What is told of a run to somebody who looks elsewhere: its progress in the title of the window and in the
// task bar, and a message at its end where the run was long and its window is not in front.
class RunNews {
public:
    // A run that ends before this is no news.
    static constexpr qint64 LongRun = 10'000;  // milliseconds

    // The window outlives the news. Its title is the one to which it goes back.
    explicit RunNews(QWidget& window, qint64 longRun = LongRun) : Window(window), Long(longRun) {}

    // A run is told of while one of these lives.
    class Session {
    public:
        explicit Session(RunNews& news) : News(news) { News.Begin(); }
        ~Session() { News.End(); }
        Session(const Session&) = delete;
        Session& operator=(const Session&) = delete;

    private:
        RunNews& News;
    };

    // Files done and in all; the progress of the one in hand from 0 to 100. Outside a session nothing is
    // told.
    void Count(int done, int total);
    void Progress(int percent);
    // What went into the trash, for the message at the end.
    void Trashed(const QString& text) { TrashText = text; }

private:
    void Begin();
    void End();
    void Tell();

    QWidget& Window;
    qint64 Long;
    QString Title;
    QElapsedTimer Clock;
    bool Runs = false;
    int Done = 0;
    int Total = 0;
    int InHand = 0;  // percent
    int Told = -1;
    QString TrashText;
};

}  // namespace Sonmira
