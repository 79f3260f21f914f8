#pragma once

#include <QElapsedTimer>
#include <QString>

/// Tells how far long work has come, in one line on standard error that goes when the work is done;
/// only where standard error is a terminal.
class Progress
{
public:
    explicit Progress(bool isLong);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// A new step begins.
    void step(const QString& what);
    /// The work is at that share of it; told a few times a second at most.
    void tell(const QString& what, double share);

private:
    void show(const QString& what);

    bool isTold_;
    qsizetype width_ = 0; ///< of what stands in the line
    QElapsedTimer sinceTold_;
};
