#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>

#include "engine/database.h"
#include "store/album_source.h"

namespace platform {
class Dialogs;
}

namespace assembly {

// The date control's text when it holds no date.
inline const QString kEmptyDateMask = QStringLiteral("__.__.__");
// Asked when the editor is closed with values it has not stored.
inline const QString kDiscardEditsQuestion = QStringLiteral(
    "The changes to this compilation are not stored. Close the editor without "
    "storing them?");

// The editor's controls as texts, as the window shows them.
struct EditorValues {
    QString name;
    QString notes;
    QString storage;
    QString format;
    QString length;
    QString manufacturer;
    QString dateText = kEmptyDateMask;  // "dd.mm.yy" or the empty mask
    QString cover;                      // the stored RTF, or "" when the box shows no text
};

// The editor edits its opener's current compilation or adds a new one.
enum class EditorMode { Edit, Add };

// The longest texts the name and storage columns take; the editor's boxes take no more.
inline constexpr int kNameLength = 80;
inline constexpr int kStorageLength = 50;

// What an Update ended with. The numbered failures are the required fields and the duplicate
// name; a length that is no whole number and a date that is no date are refused with the
// typed-value messages before anything is stored. The editor's boxes and lists cannot hold a
// text that is too long or a length below one minute, but values set otherwise (the command
// line) can, and are refused the same way.
enum class UpdateResult {
    Saved = 0,
    NameRequired = 1,
    FormatRequired = 2,
    LengthRequired = 3,
    LengthNotANumber,
    DateNotADate,
    NameTooLong,
    StorageTooLong,
    LengthNotMinutes,  // a fraction, or less than one minute
    DuplicateName = 3022,
    Failed,  // any other engine error: no message, the description is in UpdateOutcome
};

struct UpdateOutcome {
    UpdateResult result = UpdateResult::Saved;
    QString errorDescription;  // the engine's text for Failed
    bool saved() const { return result == UpdateResult::Saved; }
};

// The message an Update failure shows; empty for Saved and Failed.
QString updateFailureMessage(UpdateResult result);

// What is stored of the editor's compilation: no row yet (an "add" before its Update), a row
// without tracks, or one with tracks.
enum class StoredContent { NoRow, NoTracks, Tracks };
inline StoredContent contentOfTracks(int trackCount) {
    return trackCount >= 1 ? StoredContent::Tracks : StoredContent::NoTracks;
}

// Which cover controls are usable.
struct CoverControls {
    bool getEnabled[3] = {false, false, false};  // Performer, Perf | Album, Perf | Song
    bool sortEnabled = false;                    // both order options
    bool chooseTimeOrder = false;                // select "Time (decreasing)"
    bool fontEnabled = false;
    bool copyEnabled = false;
    bool resetCover = false;  // default font for the format and an empty rich text
};
CoverControls coverControls(StoredContent stored, const QString& format, bool coverTextEmpty,
                            bool performerAlbumOrderChosen);

enum class ValueList { Format, Length, Manufacturer };
// The entries of a value list table, in their order.
QStringList valueList(engine::Database& database, ValueList list);
bool isListedManufacturer(engine::Database& database, const QString& name);
QString manufacturerQuestion(const QString& name);
// Appends a name to LstManufacturer, in a transaction of its own.
void addManufacturer(engine::Database& database, const QString& name);
// Asks whether a name typed into the manufacturer list is to be added; Yes adds it.
// Returns false on No: the caller empties the list's text.
bool offerManufacturer(engine::Database& database, platform::Dialogs& dialogs, const QString& name);

// The id of the compilation of a name (names are unique without regard to case).
std::optional<qint64> compilationIdByName(engine::Database& database, const QString& name);

// The compilation editor without its window: the values of its controls, its state and the
// writing of one compilation. Nothing is stored before a successful Update, so closing an
// editor in "add" mode before one leaves nothing behind.
class CompilationEditor {
  public:
    explicit CompilationEditor(engine::Database database) : database_(std::move(database)) {}

    // "edit" shows the stored values of openerCurrentId (a Null column leaves its control as it
    // is); "add" starts empty with today's date.
    void loadEditor(EditorMode mode, std::optional<qint64> openerCurrentId,
                    const QDate& today = QDate::currentDate());
    // Checks and writes the values in one transaction; a failure shows its message (if it has
    // one) through dialogs and stores nothing.
    UpdateOutcome updateCompilation(platform::Dialogs& dialogs);
    // A control changed: the shown values are no longer the stored ones.
    void fieldEdited();

    StoredContent storedContent() const;
    CoverControls setCoverControls(bool coverTextEmpty, bool performerAlbumOrderChosen) const {
        return coverControls(storedContent(), values.format, coverTextEmpty,
                             performerAlbumOrderChosen);
    }

    EditorValues values;

    bool isNew() const { return isNew_; }
    bool isSaved() const { return connection_.isSaved; }
    // A value was edited since the editor was loaded or last stored.
    bool hasUnstoredEdits() const { return edited_; }
    // The cover box shows a cover just composed and stored: it changed, so Get Tracks waits for
    // an Update as after any change, but closing loses only what was unstored before.
    void coverComposed(bool editedBefore) {
        fieldEdited();
        edited_ = editedBefore;
    }
    bool getTracksEnabled() const { return connection_.getTracksEnabled; }
    std::optional<qint64> compilationId() const { return compilationId_; }
    // The state a connect of the album database reads and changes (albumConnected).
    store::EditorConnection& connection() { return connection_; }
    engine::Database& database() { return database_; }

  private:
    void loadStoredValues(qint64 id);
    UpdateResult writeValues(platform::Dialogs& dialogs);

    engine::Database database_;
    bool isNew_ = false;
    bool edited_ = false;
    std::optional<qint64> compilationId_;
    store::EditorConnection connection_;
};

}  // namespace assembly
