#pragma once

#include "settings/SettingFileInfo.h"
#include "settings/UnitSettingViewModel.h"

#include <optional>
#include <span>
#include <variant>
#include <vector>

namespace cardreel {

/// One setting of UnitSettingViewModel, for everything that goes through them all: the sheet, the command line, the
/// marks of what was changed.
struct SettingField
{
    enum class Kind {
        Switch, ///< on or off
        Choice, ///< an index into a list of texts
        Step,   ///< a small number, shown as stepText() has it
        Text    ///< shown only
    };
    /// What saving does to it on a card of some model.
    enum class Reach {
        Saved,
        Dropped,  ///< it can be changed in the editor, and no file is written with it
        NotSaved, ///< the model's file has a place for it, which editing doesn't change
        Missing   ///< the model's file has no place for it
    };
    using Member =
        std::variant<bool UnitSettingViewModel::*, int UnitSettingViewModel::*, QString UnitSettingViewModel::*>;

    const char* name; ///< the member's own
    Kind kind;
    Member member;
    int highest = 1;                                         ///< the range is 0 to this; a Choice's ends with its list
    QStringList UnitSettingViewModel::*choices = nullptr;    ///< of a Choice
    std::optional<QString> (*stepText)(int value) = nullptr; ///< of a Step; nothing for a value that has none
    Reach (*reach)(quint16 modelID) = nullptr;

    /// A switch's is 0 or 1; a text's 0.
    int value(const UnitSettingViewModel& model) const;
    /// False, changing nothing, unless the value isInRange().
    bool setValue(UnitSettingViewModel& model, int value) const;
    bool isInRange(const UnitSettingViewModel& model, int value) const;
    bool isEditable() const { return kind != Kind::Text; }
    int highestValue(const UnitSettingViewModel& model) const;

    /// The value for people, nothing when it is outside what is known.
    std::optional<QString> text(const UnitSettingViewModel& model) const;
    std::optional<QString> textOf(const UnitSettingViewModel& model, int value) const;

    /// What the user of a command line means: a number in the field's range, or one of the choices' own texts; for a
    /// switch also true, false, on, off. Nothing for anything else.
    std::optional<int> valueFromText(const UnitSettingViewModel& model, const QString& text) const;

    bool differs(const UnitSettingViewModel& a, const UnitSettingViewModel& b) const;
};

/// All of them, in the order of the model.
std::span<const SettingField> settingFields();
/// Nothing when no field has that name.
const SettingField* settingField(QStringView name);
/// The editable ones whose values differ.
std::vector<const SettingField*> changedSettingFields(const UnitSettingViewModel& before,
                                                      const UnitSettingViewModel& after);

/// One field of SettingFileInfo by name, for printing the record.
struct SettingInfoField
{
    using Member = std::variant<quint8 SettingFileInfo::*, quint16 SettingFileInfo::*, quint32 SettingFileInfo::*,
                                qint16 SettingFileInfo::*, std::optional<Instant> SettingFileInfo::*,
                                std::optional<QString> SettingFileInfo::*, QByteArray SettingFileInfo::*,
                                std::optional<QByteArray> SettingFileInfo::*>;
    const char* name;
    Member member; ///< std::visit([&](auto m) { … info.*m … }, field.member)
};
/// All of them, in the order of the record.
std::span<const SettingInfoField> settingInfoFields();

} // namespace cardreel
