#include "exchange/export_task.h"

#include "platform/core/error.h"

#include <new>

using namespace Qt::StringLiterals;

ExportTask::ExportTask(Work work, QObject* parent)
    : QObject(parent),
      thread_(QThread::create([this, work = std::move(work)] { run(work); }))
{
    connect(thread_.get(), &QThread::finished, this, &ExportTask::done);
    thread_->start();
}

ExportTask::~ExportTask()
{
    cancel();
    thread_->wait();
}

void ExportTask::run(const Work& work)
{
    try {
        work([this](double share) {
            if (isCancelled_)
                throw ExportCancelled();
            share_ = share;
        });
        isComplete_ = true;
    } catch (const ExportCancelled&) {
    } catch (const platform::Error& error) {
        problem_ = error.description;
    } catch (const std::bad_alloc&) {
        problem_ = u"No queda memoria."_s;
    } catch (const std::exception& error) {
        problem_ = QString::fromUtf8(error.what());
    }
}
