#pragma once

#include "calculation/ThreadHandle.h"

#include <VelmaraEvaluatorBase.h>

#include <QMetaType>

// The types that travel in the result signals of ThreadPool. Declared here so that any
// listener may connect with a queued connection; ThreadPool registers them under the names
// its signals spell them with.
Q_DECLARE_METATYPE(ThreadHandle)
Q_DECLARE_METATYPE(LongedEvaluation)
Q_DECLARE_METATYPE(DetailWinEvaluations)
Q_DECLARE_METATYPE(WinEvaluationsByHand)

namespace CalculationMetaTypes {
// Registers the four types with Qt's meta-type system; idempotent, main thread.
void registerAll();
} // namespace CalculationMetaTypes
