#pragma once

#include <QObject>

namespace Utils {
namespace UI {

// Event filter that swallows every paint event of the widgets it is installed on. A widget
// so filtered keeps its size and place in its layout while showing nothing, so that the
// layout does not jump when it "disappears"; removing the filter makes it visible again.
// One filter may serve any number of widgets; it holds no state.
class NoPaintFilter : public QObject {
    Q_OBJECT
public:
    explicit NoPaintFilter(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace UI
} // namespace Utils
