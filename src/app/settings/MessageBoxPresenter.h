#pragma once

#include "settings/AlertPresenter.h"

#include <functional>

class QWidget;

namespace cardreel {

/// Shows alerts as message boxes over a sheet or window, which go on answering. Owned by RecorderSettings; interface
/// thread. A box that is destroyed with what it lies over isn't answered: nobody is left to hear it.
class MessageBoxPresenter final : public AlertPresenter
{
public:
    /// `below` is asked at each alert for what it shall lie over.
    explicit MessageBoxPresenter(std::function<QWidget*()> below);

    void show(const Alert& alert, Answered answered) override;

private:
    std::function<QWidget*()> m_below;
};

} // namespace cardreel
