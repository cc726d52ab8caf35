#include "assembly/compilation_editor.h"

#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "engine/transaction.h"
#include "platform/dialogs.h"
#include "query/date_text.h"
#include "query/field_values.h"
#include "query/number_text.h"
#include "store/compilation_queries.h"

namespace assembly {

namespace {

bool isNull(const QVariant& value) {
    return !value.isValid() || value.isNull();
}

QVariant textOrNull(const QString& text) {
    return text.isEmpty() ? QVariant() : QVariant(text);
}

QString dateTextOf(const QVariant& stored) {
    if (stored.typeId() == QMetaType::QDate || stored.typeId() == QMetaType::QDateTime) {
        return query::shortDateText(stored.toDate());
    }
    const std::optional<QDate> date = query::readDate(stored.toString().left(10));
    return date ? query::shortDateText(*date) : kEmptyDateMask;
}

QString firstColumn(engine::Database& database, const QString& statement) {
    engine::Recordset rows = database.openRecordset(statement, engine::RecordsetType::Snapshot);
    return rows.eof() ? QString() : rows.value(0).toString();
}

}  // namespace

QString updateFailureMessage(UpdateResult result) {
    switch (result) {
        case UpdateResult::NameRequired:
            return QStringLiteral("Field 'Name': a value is requiered.");
        case UpdateResult::FormatRequired:
            return QStringLiteral("Field 'Format': a value is requiered.");
        case UpdateResult::LengthRequired:
            return QStringLiteral("Field 'Length': a value is requiered.");
        case UpdateResult::NameTooLong:
            return QStringLiteral("Field 'Name': at most %1 characters are allowed.")
                .arg(kNameLength);
        case UpdateResult::StorageTooLong:
            return QStringLiteral("Field 'Storage': at most %1 characters are allowed.")
                .arg(kStorageLength);
        case UpdateResult::LengthNotMinutes:
            return QStringLiteral(
                "Field 'Length': a whole number of minutes, at least 1, "
                "is required.");
        case UpdateResult::DuplicateName:
            return QStringLiteral("Field 'Name': value is already present.\rChoose another name.");
        default:
            // A refused length or date has shown the typed-value message already.
            return QString();
    }
}

CoverControls coverControls(StoredContent stored, const QString& format, bool coverTextEmpty,
                            bool performerAlbumOrderChosen) {
    CoverControls controls;
    controls.fontEnabled = true;
    controls.copyEnabled = true;
    if (stored == StoredContent::Tracks) {
        const bool cdRom = store::isCdRomCover(format);
        controls.getEnabled[0] = !cdRom;
        controls.getEnabled[1] = !cdRom;
        controls.getEnabled[2] = true;
        controls.sortEnabled = !cdRom;
        controls.chooseTimeOrder = !cdRom && !performerAlbumOrderChosen;
    }
    if (coverTextEmpty) {
        controls.resetCover = true;
        controls.fontEnabled = false;
        controls.copyEnabled = false;
    }
    return controls;
}

QStringList valueList(engine::Database& database, ValueList list) {
    static const QString statements[] = {
        QStringLiteral("SELECT Format2_P FROM LstFormat ORDER BY Format2_P"),
        QStringLiteral("SELECT Length_P FROM LstLength ORDER BY Length_P"),
        QStringLiteral("SELECT Manufacturer_P FROM LstManufacturer ORDER BY Manufacturer_P"),
    };
    engine::Recordset rows =
        database.openRecordset(statements[static_cast<int>(list)], engine::RecordsetType::Snapshot);
    QStringList entries;
    for (; !rows.eof(); rows.moveNext()) {
        entries << rows.value(0).toString();
    }
    return entries;
}

bool isListedManufacturer(engine::Database& database, const QString& name) {
    return !firstColumn(database, QStringLiteral("SELECT Count(*) FROM LstManufacturer "
                                                 "WHERE Manufacturer_P = '") +
                                      query::escapeSql(query::EscapeFor::Literal, name) +
                                      QLatin1Char('\''))
                .startsWith(QLatin1Char('0'));
}

QString manufacturerQuestion(const QString& name) {
    return QStringLiteral("Add '") + name +
           QStringLiteral("' to the list of available manufacturer/brand names?");
}

void addManufacturer(engine::Database& database, const QString& name) {
    engine::ScopedTransaction transaction(database);
    engine::Recordset list = database.openRecordset(QStringLiteral("LstManufacturer"));
    list.addNew();
    list.setValue(QStringLiteral("Manufacturer_P"), name);
    list.update();
    transaction.commit();
}

bool offerManufacturer(engine::Database& database, platform::Dialogs& dialogs,
                       const QString& name) {
    if (!dialogs.askYesNo(manufacturerQuestion(name), platform::MessageAnswer::Yes)) {
        return false;
    }
    addManufacturer(database, name);
    return true;
}

std::optional<qint64> compilationIdByName(engine::Database& database, const QString& name) {
    const QString id = firstColumn(
        database, QStringLiteral("SELECT CompilationID_P FROM Compilation WHERE Name = '") +
                      query::escapeSql(query::EscapeFor::Literal, name) + QLatin1Char('\''));
    if (id.isEmpty()) {
        return std::nullopt;
    }
    return id.toLongLong();
}

void CompilationEditor::loadEditor(EditorMode mode, std::optional<qint64> openerCurrentId,
                                   const QDate& today) {
    isNew_ = false;
    edited_ = false;
    connection_ = store::EditorConnection{};
    if (mode == EditorMode::Edit) {
        compilationId_ = openerCurrentId;
        if (openerCurrentId) {
            loadStoredValues(*openerCurrentId);
        }
        connection_.isSaved = true;
        return;
    }
    compilationId_.reset();
    values = EditorValues{};
    values.dateText = query::shortDateText(today);
    isNew_ = true;
}

void CompilationEditor::loadStoredValues(qint64 id) {
    engine::Recordset row = database_.openRecordset(store::compilationRowStatement(id),
                                                    engine::RecordsetType::Snapshot);
    if (row.eof()) {
        return;  // a compilation deleted meanwhile: the controls keep their values
    }
    const auto copy = [&row](const QString& column, QString& control) {
        const QVariant value = row.value(column);
        if (!isNull(value)) {
            control = value.toString();
        }
    };
    copy(QStringLiteral("C_Name"), values.name);
    copy(QStringLiteral("C_Notes"), values.notes);
    copy(QStringLiteral("C_Box"), values.storage);
    copy(QStringLiteral("C_Format"), values.format);
    copy(QStringLiteral("C_length"), values.length);
    copy(QStringLiteral("Manufacturer"), values.manufacturer);
    const QVariant date = row.value(QStringLiteral("RecDate"));
    if (!isNull(date)) {
        values.dateText = dateTextOf(date);
    }
    copy(QStringLiteral("covermemo"), values.cover);
}

UpdateOutcome CompilationEditor::updateCompilation(platform::Dialogs& dialogs) {
    UpdateOutcome outcome;
    try {
        outcome.result = writeValues(dialogs);
    } catch (const engine::JetError& error) {
        outcome.result = error.number() == engine::jet::kDuplicateValue
                             ? UpdateResult::DuplicateName
                             : UpdateResult::Failed;
        outcome.errorDescription = error.description();
    }
    if (!outcome.saved()) {
        const QString message = updateFailureMessage(outcome.result);
        if (!message.isEmpty()) {
            dialogs.exclamation(message);
        }
        fieldEdited();
        return outcome;
    }
    connection_.isSaved = true;
    connection_.getTracksEnabled = connection_.albumConnected;
    edited_ = false;
    return outcome;
}

// The checks and writes in their order; a failed check returns before the row is stored, and
// the transaction then leaves the file as it was.
UpdateResult CompilationEditor::writeValues(platform::Dialogs& dialogs) {
    engine::ScopedTransaction transaction(database_);
    engine::Recordset row = database_.openRecordset(
        store::compilationRowStatement(isNew_ ? 0 : compilationId_.value_or(0)));
    if (isNew_) {
        row.addNew();
    } else {
        row.edit();
    }
    if (values.name.isEmpty()) {
        return UpdateResult::NameRequired;
    }
    if (values.name.size() > kNameLength) {
        return UpdateResult::NameTooLong;
    }
    row.setValue(QStringLiteral("C_Name"), values.name);
    row.setValue(QStringLiteral("C_Notes"), textOrNull(values.notes));
    if (values.storage.size() > kStorageLength) {
        return UpdateResult::StorageTooLong;
    }
    row.setValue(QStringLiteral("C_Box"), textOrNull(values.storage));
    if (values.format.isEmpty()) {
        return UpdateResult::FormatRequired;
    }
    row.setValue(QStringLiteral("C_Format"), values.format);
    if (values.length.isEmpty()) {
        return UpdateResult::LengthRequired;
    }
    const query::FieldValue length =
        query::checkValue(values.length, query::ValueKind::Number, false, dialogs);
    if (length.kind() != query::FieldValue::Kind::Integer) {
        return UpdateResult::LengthNotANumber;
    }
    // The number check rounds; a medium's length is whole minutes, and there is no empty one.
    if (length.integer() < 1 || query::hasFraction(values.length)) {
        return UpdateResult::LengthNotMinutes;
    }
    row.setValue(QStringLiteral("C_length"), int(length.integer()));
    row.setValue(QStringLiteral("Manufacturer"), textOrNull(values.manufacturer));
    QVariant date;
    if (values.dateText != kEmptyDateMask) {
        const query::FieldValue typed =
            query::checkValue(values.dateText, query::ValueKind::Date, false, dialogs);
        if (typed.kind() != query::FieldValue::Kind::Date) {
            return UpdateResult::DateNotADate;
        }
        date = typed.date();
    }
    row.setValue(QStringLiteral("RecDate"), date);
    // An empty cover is the empty text, never Null.
    row.setValue(QStringLiteral("covermemo"),
                 values.cover.isEmpty() ? QStringLiteral("") : values.cover);
    row.update();
    row.setBookmark(row.lastModified());
    const qint64 storedId = row.value(QStringLiteral("CompilationID_P")).toLongLong();
    transaction.commit();
    compilationId_ = storedId;
    isNew_ = false;
    return UpdateResult::Saved;
}

void CompilationEditor::fieldEdited() {
    edited_ = true;
    connection_.isSaved = false;
    connection_.getTracksEnabled = false;
}

StoredContent CompilationEditor::storedContent() const {
    if (!compilationId_ || *compilationId_ < 1) {
        return StoredContent::NoRow;
    }
    engine::Database database = database_;
    engine::Recordset row = database.openRecordset(
        QStringLiteral("SELECT SumTrack FROM Compilation WHERE CompilationID_P = ") +
            QString::number(*compilationId_),
        engine::RecordsetType::Snapshot);
    if (row.eof()) {
        return StoredContent::NoRow;
    }
    return contentOfTracks(row.value(0).toInt());
}

}  // namespace assembly
