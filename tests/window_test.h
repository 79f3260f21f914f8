#pragma once

#include "app/workspace.h"
#include "platform/forms/form.h"
#include "platform/forms/msg_box.h"
#include "support.h"

#include <QTest>
#include <QTimer>
#include <functional>
#include <optional>

/// A test with fresh windows over a copy of the shipped data. Message boxes are answered by
/// `boxes`; one that wasn't expected, or an answer not asked for, fails the test.
class WindowTest : public testing::Test
{
protected:
    WindowTest() { app.addShippedData(); }
    ~WindowTest() override
    {
        for (const auto& box : boxes.unexpected())
            ADD_FAILURE() << "unexpected box: " << box.text.toStdString();
        EXPECT_EQ(boxes.answersLeft(), 0u) << "an expected box didn't come";
    }

    /// Runs a call that shows a modal window, and the action as soon as that window is up.
    static void duringModal(const std::function<void()>& call, const std::function<void()>& action)
    {
        QTimer::singleShot(0, qApp, action);
        call();
    }

    TempAppFolder app;
    Workspace workspace;
    platform::MsgBox::Script boxes;
    platform::FormRegistry forms;
};
