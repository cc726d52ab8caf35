#pragma once

#include <QPointer>
#include <QWidget>
#include <array>
#include <optional>

#include "assembly/compilation_editor.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace platform {
class Dialogs;
}
namespace shell {
class Session;
}

namespace ui {

class CoverTextBox;
class OverviewWindow;

// The colours of the required fields: on displays of at most 256 colours the highlight pair,
// else the tooltip background with the window text.
struct FieldColours {
    QColor back;
    QColor fore;
};
FieldColours requiredFieldColours(double colourCount, const QPalette& system);

// The compilation editor ("frmEditCompilation"): one compilation's values, its cover text, the
// connect of the album database and the way to the track picker. It hides its opener while it
// is open and shows it again when it closes. Its events call assembly::CompilationEditor; what
// it stores it announces through the session, so that the lists follow.
class EditCompilationWindow : public QWidget {
    Q_OBJECT
  public:
    // Edit edits currentId, Add adds a compilation.
    EditCompilationWindow(shell::Session& session, platform::Dialogs& dialogs, QWidget* opener,
                          assembly::EditorMode mode, std::optional<qint64> currentId);

    assembly::CompilationEditor& editor() { return editor_; }
    assembly::EditorMode mode() const { return mode_; }

    // Update, as the button does; true when the compilation was stored.
    bool update();
    // Enables the cover controls by the stored tracks, the format and the cover text.
    void setCoverControls();

  signals:
    // Get Tracks was pressed: the track picker is to open on this stored compilation.
    void getTracksRequested(qint64 compilationId);
    // The editor closed; addedId is the compilation an "add" stored, if any.
    void unloaded(std::optional<qint64> addedId);

  protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool closeWithoutStoring();
    void buildControls();
    QWidget* buildFieldsFrame();
    void connectFieldEvents();
    QWidget* buildCoverFrame();
    void fillValueLists();
    void load(std::optional<qint64> currentId);
    void showValues();
    void readValues();
    void markRequiredFields();
    void fieldEdited();
    void formatEdited();
    void showGetTracksState();
    void offerManufacturer();
    void connectAlbum();
    void getTracks();
    void composeCover(int button);

    shell::Session& session_;
    platform::Dialogs& dialogs_;
    QPointer<QWidget> opener_;
    assembly::EditorMode mode_;
    assembly::CompilationEditor editor_;
    bool showingValues_ = false;  // controls change by the window's own hand
    bool askingManufacturer_ = false;

    QLineEdit* name_ = nullptr;
    QComboBox* format_ = nullptr;
    QComboBox* length_ = nullptr;
    QComboBox* manufacturer_ = nullptr;
    QLineEdit* storage_ = nullptr;
    QLineEdit* date_ = nullptr;
    QLineEdit* notes_ = nullptr;
    CoverTextBox* cover_ = nullptr;
    QPushButton* updateButton_ = nullptr;
    QPushButton* connectButton_ = nullptr;
    QPushButton* getTracksButton_ = nullptr;
    std::array<QPushButton*, 3> getButtons_{};
    std::array<QRadioButton*, 2> sortOptions_{};
    QPushButton* fontButton_ = nullptr;
    QPushButton* copyButton_ = nullptr;
};

// Opens the editor in a mode for an opener (the main window or a window it owns): not modal, owned
// by the opener, registered with the main window's windows. When it closes, the main window's list
// takes the goto field of its first column again and, after an "add", makes the new compilation its
// current row.
EditCompilationWindow* openCompilationEditor(shell::Session& session, platform::Dialogs& dialogs,
                                             QWidget* opener, assembly::EditorMode mode,
                                             std::optional<qint64> currentId);

}  // namespace ui
