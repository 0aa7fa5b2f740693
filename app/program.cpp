#include "app/program.h"

#include "app/main_window.h"
#include "app/plot_request.h"
#include "document/interval_text.h"

namespace korvinth::app {

Program::Program() : window_(std::make_unique<MainWindow>(application_, dialogs_))
{
    dialogs_.SetWindow(window_.get());
    connect(window_.get(), &MainWindow::closing, this, [this] { RunSteps(EndSteps(), *this); });
}

Program::~Program() = default;

void Program::Start(const CommandLine& command)
{
    RunSteps(StartSteps(), *this);
    const PlotRequestReport request = ApplyRequest(application_, command);
    window_->PlotSession().ShowPlot(request);
    window_->show();
}

void Program::RunParserOnce() { application_.Parser().EvalText("1"); }

void Program::PrepareIntervalTexts()
{
    for (document::FunctionSlot& slot : application_.Document().slots) {
        slot.lower_bound.clear();
        slot.upper_bound.clear();
    }
}

void Program::SetDefaults() { application_.Document().attributes = document::DisplayAttributes(); }

void Program::LoadDefinitions()
{
    application_.Parser().Reset();
    document::DefineSystemVariables(application_.Parser(), application_.Document());
}

void Program::ComputeMapping() { application_.UpdateMapping(); }

void Program::ArrangeWindows() { window_->ArrangeWindows(); }

void Program::FinishIntervalTexts()
{
    for (document::FunctionSlot& slot : application_.Document().slots) {
        slot.interval = document::kOpenInterval;
    }
}

void Program::StopTimers() { window_->PlotSession().Animation().StopAll(); }

void Program::CloseSliders() { window_->CloseSliders(); }

void Program::CloseWindows() { window_->CloseWindows(); }

}  // namespace korvinth::app
