#pragma once

#include <QTest>

namespace cardreel::test {

// Sanitized builds decode many times slower; a failure is the only thing that takes this long.
constexpr int patienceMs = 20'000;

} // namespace cardreel::test

/// Handles events until the expression is true. Looks more often than QTRY_VERIFY does, for tests that wait for
/// hundreds of frames.
#define WAIT_FOR(expression)                                                                                           \
    QVERIFY(QTest::qWaitFor([&] { return static_cast<bool>(expression); }, cardreel::test::patienceMs))
