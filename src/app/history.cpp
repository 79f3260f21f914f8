#include "app/history.h"

#include <algorithm>

History::Step::Step(History& history, const QString& text) : QUndoCommand(text), history_(&history)
{
}

History::Step::~Step()
{
    history_->bytes_ -= counted_;
}

void History::Step::redo()
{
    exchange();
    count();
}

void History::Step::undo()
{
    exchange();
    count();
}

void History::Step::count()
{
    ++history_->revision_;
    history_->bytes_ += bytes() - counted_;
    counted_ = bytes();
}

History::History()
{
    connect(&stack_, &QUndoStack::indexChanged, this, &History::changed);
    connect(&stack_, &QUndoStack::cleanChanged, this, &History::changed);
}

/// Nobody is told that there is nothing left to undo.
History::~History()
{
    disconnect(&stack_, nullptr, this, nullptr);
}

void History::push(std::unique_ptr<Step> step)
{
    stack_.push(step.release());
    forgotten_ = std::min(forgotten_, stack_.count());
    // Steps can't be taken out of the stack from its beginning; they are emptied instead.
    while (bytes_ > maxBytes && forgotten_ < stack_.count()) {
        const QUndoCommand* const oldest = stack_.command(forgotten_++);
        auto* const forgotten = const_cast<Step*>(static_cast<const Step*>(oldest));
        forgotten->forget();
        forgotten->count();
    }
}

void History::clear()
{
    stack_.clear();
    forgotten_ = 0;
    ++revision_;
    emit changed();
}

void History::undo()
{
    if (canUndo())
        stack_.undo();
}
