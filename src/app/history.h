#pragma once

#include <QObject>
#include <QUndoStack>
#include <memory>

/// The steps of a document that can be undone and redone. They take a bounded amount of memory:
/// beyond it the oldest can't be undone any more.
class History final : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 maxBytes = qint64{64} * 1024 * 1024;

    /// A step holds what its document would have without it, or with it once it is undone.
    class Step : public QUndoCommand
    {
    public:
        /// The text says what it does: "añadir «Daga»".
        Step(History& history, const QString& text);
        ~Step() override;
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

        void redo() final;
        void undo() final;

    protected:
        /// Exchanges what the step holds with the document. Can't fail.
        virtual void exchange() = 0;
        /// Lets go what it holds.
        virtual void forget() = 0;
        /// About what it holds in memory.
        virtual qint64 bytes() const = 0;

        /// Takes note that the step holds more than before, or less.
        void count();

    private:
        friend class History;

        History* history_;
        qint64 counted_ = 0;
    };

    History();
    ~History() override;

    /// Does a step, and takes it into the history; those that were undone are gone.
    void push(std::unique_ptr<Step> step);
    void clear();

    /// Whether the document is as it was at the last setClean; at first it is.
    bool isClean() const { return stack_.isClean(); }
    void setClean() { stack_.setClean(); }
    void resetClean() { stack_.resetClean(); }

    bool canUndo() const { return stack_.index() > forgotten_; }
    bool canRedo() const { return stack_.canRedo(); }
    /// What the next step back or forth does; empty if there is none.
    QString undoText() const { return canUndo() ? stack_.undoText() : QString(); }
    QString redoText() const { return stack_.redoText(); }
    void undo();
    void redo() { stack_.redo(); }
    /// About what the steps hold in memory.
    qint64 bytes() const { return bytes_; }
    /// Another number whenever the document may have changed.
    int revision() const { return revision_; }

signals:
    /// What can be undone and redone changed, or whether the document is clean.
    void changed();

private:
    qint64 bytes_ = 0;
    int revision_ = 0;
    int forgotten_ = 0; ///< how many steps at the beginning can't be undone any more
    QUndoStack stack_;
};
