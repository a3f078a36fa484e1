#include <VelmaraEvaluatorBase.h>
#include <gtest/gtest.h>

namespace {

// The evaluator's one-time preparation, before the first test calls into it.
class EvaluatorPreparation : public ::testing::Environment {
public:
    void SetUp() override { initializeAllBoardsBeforeCalculation(); }
};

const ::testing::Environment* const preparation =
    ::testing::AddGlobalTestEnvironment(new EvaluatorPreparation);

} // namespace
