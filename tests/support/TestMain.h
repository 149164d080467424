// main() of a widget test: NV_TEST_MAIN(tst_Something) in place of QTEST_MAIN.

#pragma once

#include "GuardedRun.h"

#include <QtTest>

#include <functional>
#include <memory>

// Sets up the application as every test wants it (offscreen unless QT_QPA_PLATFORM says otherwise, Fusion
// style, settings and working directory in a temporary folder), makes the test object and runs it. Returns
// the exit code.
int RunGuardedTest(int argc, char** argv, const std::function<std::unique_ptr<QObject>()>& makeTest);

// Defines main(). Around each test function of TestClass, once a data row, stand two gates: a warning that
// was not announced (see AnnounceWarning) fails it, and so does a top-level widget that is left over.
// TestClass needs nothing for that; if it has init() and cleanup(), these belong to the guarded stretch.
#define NV_TEST_MAIN(TestClass)                                                                              \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        return RunGuardedTest(argc, argv,                                                                    \
                              []() -> std::unique_ptr<QObject>                                               \
                              { return std::make_unique<Guarded<TestClass>>(); });                           \
    }
