#include "settings/KeyRepeats.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <array>
#include <string>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;

/// Notes what reaches it.
class NotingWindow final : public QObject {
public:
    std::vector<std::string> told;

protected:
    bool event(QEvent* event) override {
        if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return QObject::event(event);
        const std::string repeats = static_cast<QKeyEvent*>(event)->isAutoRepeat() ? "again" : "";
        told.push_back((event->type() == QEvent::KeyPress ? "press" : "release") + repeats);
        return true;
    }
};

class KeyRepeatsTest : public testing::Test {
protected:
    KeyRepeatsTest() { new KeyRepeats(&window); }  // which belongs to it
    void send(QEvent::Type type, int key, quint64 time, bool isRepetition = false) {
        QKeyEvent event(type, key, Qt::NoModifier, {}, isRepetition);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(&window, &event);
    }

    NotingWindow window;

private:
    int argumentCount_ = 1;
    std::array<char*, 2> arguments_{const_cast<char*>("test"), nullptr};
    QCoreApplication application_{argumentCount_, arguments_.data()};
};

TEST_F(KeyRepeatsTest, APressAtTheTimeOfItsReleaseIsARepetition) {
    send(QEvent::KeyPress, Qt::Key_Return, 100);
    send(QEvent::KeyRelease, Qt::Key_Return, 760);
    send(QEvent::KeyPress, Qt::Key_Return, 760);
    send(QEvent::KeyRelease, Qt::Key_Return, 800);

    EXPECT_THAT(window.told, ElementsAre("press", "release", "pressagain", "release"));
}

TEST_F(KeyRepeatsTest, ALaterPressAndThatOfAnotherKeyArePresses) {
    send(QEvent::KeyRelease, Qt::Key_Return, 100);
    send(QEvent::KeyPress, Qt::Key_Return, 101);
    send(QEvent::KeyRelease, Qt::Key_Return, 200);
    send(QEvent::KeyPress, Qt::Key_Space, 200);

    EXPECT_THAT(window.told, ElementsAre("release", "press", "release", "press"));
}

TEST_F(KeyRepeatsTest, WhatIsKnownAsARepetitionAndWhatHasNoTimeStaysAsItIs) {
    send(QEvent::KeyRelease, Qt::Key_Return, 100, true);
    send(QEvent::KeyPress, Qt::Key_Return, 100, true);
    send(QEvent::KeyRelease, Qt::Key_Return, 0);
    send(QEvent::KeyPress, Qt::Key_Return, 0);

    EXPECT_THAT(window.told, ElementsAre("releaseagain", "pressagain", "release", "press"));
}

}  // namespace
}  // namespace velmorand
