#pragma once

// Tests that need the real input method run inside a private IBus + Mozc
// session as an unprivileged user, on an X display of its own
// (scripts/ibus-session.sh). Such a test program starts itself again inside
// one; without a display or without IBus and Mozc its cases skip.
namespace IBusSession {

// Outside a session: runs this program again inside one, puts its exit
// status in `status` and returns true. Inside one (or when none can be
// started) returns false: the caller runs its tests.
bool runInside(int argc, char **argv, int &status);

// Whether the input method is really there (inside a session).
bool available();

} // namespace IBusSession

#define LANTERN_IBUS_TEST_MAIN(TestClass) \
    int main(int argc, char **argv) \
    { \
        int status = 0; \
        if (IBusSession::runInside(argc, argv, status)) \
            return status; \
        QApplication app(argc, argv); \
        TestClass test; \
        return QTest::qExec(&test, argc, argv); \
    }
