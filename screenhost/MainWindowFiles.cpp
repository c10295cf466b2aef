// New, open, save, and what becomes of changes that nobody has saved.
#include "screenhost/Dialogs.h"
#include "screenhost/MainWindow.h"
#include "screenhost/ResourceIds.h"
#include "screenhost/TextFile.h"
#include "screenhost/WideText.h"
#include "screenhost/WindowPicture.h"

namespace screenhost {

namespace {

constexpr FileKind ScreenKind{L"Screens (*.screen)\0*.screen\0All files\0*.*\0", L"screen"};
constexpr FileKind PictureKind{L"Pictures (*.png)\0*.png\0", L"png"};

}  // namespace

ScreenFile ReadScreen(const std::string& fileName, HostLog& log) {
    ScreenFile file = ScreenFile::Parse(ReadTextFile(fileName, ScreenFile::MaxBytes));
    for (const Problem& problem : file.Problems())
        log.Add("error", fileName + ":" + std::to_string(problem.line) + ": " + problem.message);
    return file;
}

void MainWindow::Save(const std::string& fileName) {
    m_view->Design().Commit("Edit");
    WriteTextFile(fileName, m_view->DocumentText());
    m_view->Design().History().MarkSaved();
    ShowStatus("Saved " + fileName + ".");
    UpdateTitle();
}

void MainWindow::SaveAs() {
    const std::string name = AskForFile(Handle(), m_fileName, ScreenKind);
    if (name.empty()) return;
    Save(name);
    m_fileName = name;
    Remember(name);
    UpdateTitle();
}

void MainWindow::SaveDocument() {
    m_fileName.empty() ? SaveAs() : Save(m_fileName);
}

void MainWindow::SavePictureAs() {
    const std::string name = AskForFile(Handle(), {}, PictureKind);
    if (!name.empty()) SaveWindowPicture(Handle(), name);
}

bool MainWindow::MayDrop() {
    m_view->Design().Commit("Edit");
    if (!m_view->Design().History().IsChanged()) return true;
    if (m_bQuiet) {
        m_context.log->Add("host", "changes of the screen are not saved");
        return true;
    }
    const std::string name = m_fileName.empty() ? "the new screen" : m_fileName;
    const int answer = MessageBoxW(Handle(), Wide("Save the changes of " + name + "?").c_str(), L"Screen Host",
                                   MB_YESNOCANCEL | MB_ICONQUESTION);
    if (answer == IDYES) SaveDocument();
    // Also when the question where to save was given up.
    return answer == IDNO || (answer == IDYES && !m_view->Design().History().IsChanged());
}

void MainWindow::OpenFile(const std::string& fileName) {
    if (m_properties) m_properties->Close();
    ScreenFile file = ReadScreen(fileName, *m_context.log);
    const std::size_t problems = file.Problems().size();
    m_view->Load(std::move(file));
    m_fileName = fileName;
    m_context.log->Add("host", "opened " + fileName);
    Remember(fileName);
    UpdateTitle();
    UpdateCommands();
    Poll();
    TellProblems(problems);
}

/// Each of them stands in the log, with its number.
void MainWindow::TellProblems(std::size_t count) {
    if (count == 0) return;
    ShowStatus(std::to_string(count) + (count == 1 ? " bad line" : " bad lines") + " in the screen: see the log.");
}

void MainWindow::NewFile() {
    if (m_properties) m_properties->Close();
    m_view->Load(ScreenFile::Parse({}));
    m_fileName.clear();
    SwitchMode(false);
    UpdateTitle();
}

void MainWindow::OnClose() {
    if (!MayDrop()) return;
    KillTimer(Handle(), PollTimer);
    RememberWindow();
    if (m_properties) m_properties->Close();
    m_view->CloseControls();
    PostQuitMessage(0);
}

bool MainWindow::OnFileCommand(int command) {
    switch (command) {
        case CMD_NEW:
            if (MayDrop()) NewFile();
            return true;
        case CMD_OPEN:
            if (MayDrop()) {
                const std::string name = AskForExistingFile(Handle(), ScreenKind);
                if (!name.empty()) OpenFile(name);
            }
            return true;
        case CMD_SAVE:
            SaveDocument();
            return true;
        case CMD_SAVE_AS:
            SaveAs();
            return true;
        case CMD_PICTURE:
            SavePictureAs();
            return true;
        case CMD_EXIT:
            SendMessageW(Handle(), WM_CLOSE, 0, 0);
            return true;
        default:
            return OnRecentCommand(command);
    }
}

}  // namespace screenhost
