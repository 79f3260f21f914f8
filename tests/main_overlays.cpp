#include <QGuiApplication>
#include <gtest/gtest.h>

/// Letters need fonts, which a program without a window system's application doesn't have.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
