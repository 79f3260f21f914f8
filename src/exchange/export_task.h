#pragma once

#include "exchange/export_files.h"

#include <QObject>
#include <QThread>
#include <atomic>
#include <memory>

/// Work on an export that goes on while windows are used, on a thread of its own. It can be given
/// up.
class ExportTask : public QObject
{
    Q_OBJECT

public:
    using Work = std::function<void(const Advance& advance)>;

    /// Begins the work. What it throws is kept as its problem.
    explicit ExportTask(Work work, QObject* parent = nullptr);
    /// Gives it up and waits for it.
    ~ExportTask() override;

    /// Has the work end where it next tells how far it is.
    void cancel() { isCancelled_ = true; }
    /// How far it is, from 0 to 1.
    double share() const { return share_; }

    /// Once it is done: what went wrong, in Spanish; empty after a success, and when it was given
    /// up.
    const QString& problem() const { return problem_; }
    /// Once it is done: whether it came to its end.
    bool isComplete() const { return isComplete_; }

signals:
    void done();

private:
    void run(const Work& work);

    std::atomic<bool> isCancelled_ = false;
    std::atomic<double> share_ = 0;
    QString problem_;
    bool isComplete_ = false;
    std::unique_ptr<QThread> thread_;
};
