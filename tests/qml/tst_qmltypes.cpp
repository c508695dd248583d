// SPDX-License-Identifier: MIT

// Runs the tst_*.qml of this folder.

#include "Backend.h"
#include "ImportVariant.h"
#include "TestTrace.h"

#include <QtQml/QQmlEngine>
#include <QtQuickTest/quicktest.h>

class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable()
    {
        qmlRegisterType<TestTrace>("ChartsTest", 1, 0, "TestTrace");
        qmlRegisterType<Backend>("ChartsTest", 1, 0, "Backend");
    }
    void qmlEngineAvailable(QQmlEngine *engine) { applyImportVariant(*engine); }
};

QUICK_TEST_MAIN_WITH_SETUP(tst_qmltypes, Setup)

#include "tst_qmltypes.moc"
