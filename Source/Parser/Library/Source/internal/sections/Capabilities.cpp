// SPDX-FileCopyrightText: 2026 The ovparser authors
// SPDX-License-Identifier: MIT

#include "Capabilities.h"

#include "SectionAccess.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace ovparser::internal {

namespace {

namespace Key = PLKeyword::Key;
namespace Value = PLKeyword::Value;

struct SystemName
{
    QLatin1String text;
    EVEXA_Types type = eVEXA_STANDARD;
};

/** The first text that a system configuration contains tells the instrument's family. */
constexpr SystemName systemNames[] = {
    {Value::Vexa50, eVEXA_STANDARD},
    {Value::Vexa100, eVEXA_STANDARD},
    {Value::Vexa200, eVEXA_200},
    {Value::Corvix, eVEXA_CORVIX},
};

/** The integer of a key, or a default when the key is absent. */
int integerOf(const CPLSection& section, QLatin1String key, int absent)
{
    int number = absent;
    checked(section.getValue(key, &number));
    return number;
}

using State = InstrumentState;
using Flag = bool State::*;

/** What a condition asks of the value of a key, or of a flag that an earlier row has derived. */
enum Test { Always, Yes, Equals, Contains, Present, NotNegative, Set, Clear };

struct Condition
{
    constexpr Condition() = default;
    constexpr Condition(Test what, QLatin1String which, QLatin1String wanted = {})
        : test(what)
        , key(which)
        , text(wanted)
    {}
    constexpr Condition(Test what, Flag which)
        : test(what)
        , flag(which)
    {}

    Test test = Always;
    QLatin1String key;
    QLatin1String text;
    Flag flag = nullptr;
};

/** Instrument families as a set. */
using Systems = unsigned;

constexpr Systems only(EVEXA_Types system)
{
    return 1U << unsigned(system);
}

constexpr Systems AnySystem = ~0U;
constexpr Systems Standard = only(eVEXA_STANDARD);
constexpr Systems Vexa200 = only(eVEXA_200);

/** The flag becomes true when the instrument is of one of the families and all conditions hold. */
struct Row
{
    Flag flag = nullptr;
    Systems systems = AnySystem;
    Condition conditions[4];
};

/** Flags that start anew with every derivation; the others keep the true of an earlier one. */
constexpr Flag recomputed[] = {
    &State::fluorescentKitInstalled,
    &State::aurora,
    &State::princetonAurora,
    &State::trayInstalled,
    &State::ct,
    &State::kestrel,
    &State::omegaInstalled,
    &State::omegaOutput2,
    &State::emissionWheel2Installed,
    &State::transportBedSupported,
    &State::xrayInstalled,
    &State::largeAnimalCapable,
};

// clang-format off
/** How the capabilities follow from the description, row by row and in this order. */
constexpr Row rows[] = {
    {&State::usbIoBoardInstalled,     AnySystem, {{Yes, Key::UsbIoBoard}}},
    {&State::uacBoardInstalled,       AnySystem, {{Yes, Key::UacBoard}}},
    {&State::spinnerDeviceActive,     AnySystem, {{Yes, Key::CorvixImager}}},
    {&State::spinnerInstalled,        AnySystem, {{Yes, Key::CorvixImager}}},
    {&State::chipReaderInstalled,     AnySystem, {{Yes, Key::ChipReader}}},
    {&State::xrayInstalled,           AnySystem, {{Yes, Key::XRayController}}},
    {&State::largeAnimalCapable,      AnySystem, {{Present, Key::XRay2PositionC}}},
    {&State::emissionWheel2Installed, AnySystem, {{Present, Key::Filter2MotorDriver}}},
    {&State::emissionWheel2Installed, AnySystem, {{Present, Key::EmFilter2MotorDriver}}},
    {&State::omegaOutput2,            AnySystem, {{Equals, Key::OmegaController, Value::OmegaCni32}}},
    {&State::omegaOutput2,            AnySystem, {{Equals, Key::OmegaController, Value::OmegaOutput2}}},
    {&State::omegaInstalled,          AnySystem, {{Set, &State::omegaOutput2}}},
    {&State::omegaInstalled,          AnySystem, {{Yes, Key::OmegaController}}},
    {&State::omegaInstalled,          AnySystem, {{Equals, Key::OmegaController, Value::OmegaOutput1}}},
    // Without a value that says so, a VEXA 200 has one, and so has an instrument with a board.
    {&State::omegaInstalled,          Vexa200,   {{Equals, Key::OmegaController, Value::Empty}}},
    {&State::omegaInstalled,          AnySystem, {{Set, &State::usbIoBoardInstalled}}},
    {&State::omegaInstalled,          AnySystem, {{Set, &State::uacBoardInstalled}}},
    {&State::fluorescentKitInstalled, AnySystem, {{Yes, Key::FluorescenceKit}}},
    {&State::bl,                      Vexa200,   {{Clear, &State::fluorescentKitInstalled}}},
    {&State::aurora,                  Vexa200,   {{Present, Key::FluorescenceXMotorDriver},
                                                  {Present, Key::FluorescenceYMotorDriver},
                                                  {Set, &State::fluorescentKitInstalled}}},
    {&State::princetonAurora,         Vexa200,   {{Contains, Key::CameraSystemInfo, Value::Sophia}}},
    {&State::trayInstalled,           AnySystem, {{Present, Key::FiducialMiddle}}},
    {&State::trayInstalled,           AnySystem, {{Present, Key::FiducialFront}}},
    {&State::trayInstalled,           AnySystem, {{Present, Key::FiducialMiddleFront}}},
    {&State::trayInstalled,           AnySystem, {{Present, Key::FiducialMiddleBack}}},
    {&State::trayInstalled,           AnySystem, {{Present, Key::FiducialBack}}},
    {&State::ct,                      Vexa200,   {{NotNegative, Key::RotationStageMotorDriver}}},
    {&State::kestrel,                 AnySystem, {{Contains, Key::CameraSystemInfo, Value::Du88}}},
    {&State::kestrel,                 AnySystem, {{Contains, Key::CameraCcdType, Value::Emccd}}},
    {&State::tesselHT,                Standard,  {{Set, &State::emissionWheel2Installed}}},
    {&State::transportBedSupported,   Vexa200,   {{Set, &State::aurora}}},
    {&State::transportBedSupported,   Vexa200,   {{Yes, Key::MouseImagingShuttle}}},
    {&State::sideMirrorChecked,       Vexa200,   {{Yes, Key::SideViewMirrorEnabled},
                                                  {Present, Key::StageOffset},
                                                  {Present, Key::MirrorXOffset},
                                                  {Present, Key::MirrorAngle}}},
};
// clang-format on

bool equals(const CPLSection& section, QLatin1String key, QLatin1String text)
{
    return valueOf(section, key).compare(text, Qt::CaseInsensitive) == 0;
}

bool holds(const Condition& condition, const CPLSection& section, const State& state)
{
    switch (condition.test) {
    case Always:
        return true;
    case Yes:
        return readsYes(section, condition.key);
    case Equals:
        return equals(section, condition.key, condition.text);
    case Contains:
        return valueOf(section, condition.key).contains(condition.text, Qt::CaseInsensitive);
    case Present:
        return hasKey(section, condition.key);
    case NotNegative:
        return integerOf(section, condition.key, -1) >= 0;
    case Set:
        return state.*condition.flag;
    case Clear:
        return !(state.*condition.flag);
    }
    return false;
}

bool applies(const Row& row, const CPLSection& section, const State& state)
{
    return (row.systems & only(state.systemType)) != 0 &&
           std::all_of(
               std::begin(row.conditions), std::end(row.conditions),
               [&](const Condition& condition) { return holds(condition, section, state); });
}

} // namespace

EVEXA_Types classifySystem(const QString& systemConfiguration)
{
    for (const SystemName& name : systemNames) {
        if (systemConfiguration.contains(name.text, Qt::CaseInsensitive))
            return name.type;
    }
    return eVEXA_STANDARD;
}

bool readsYes(const CPLSection& section, QLatin1String key)
{
    return equals(section, key, Value::Yes);
}

void deriveCapabilities(const CPLSection& section, InstrumentState& state)
{
    state.electronicsTrayPartNum = integerOf(section, Key::ElectronicsTrayPartNumber, 0);
    state.polarity = integerOf(section, Key::LightsControlPolarity, -1);
    state.structureLaserDelay =
        state.systemType == eVEXA_200 ? integerOf(section, Key::StructuredLightDelay, 0) : 0;
    for (const Flag flag : recomputed)
        state.*flag = false;
    for (const Row& row : rows) {
        if (applies(row, section, state))
            state.*row.flag = true;
    }
    state.doorClosedOnZeroStatus =
        !state.usbIoBoardInstalled && state.systemType != eVEXA_200 &&
        !equals(section, Key::ElectronicsTrayPartNumber, Value::OldElectronicsTray);
}

bool isPositionKey(const QString& key)
{
    return key.startsWith(Key::ShelfPosition, Qt::CaseInsensitive) &&
           key.contains(Key::FovPart, Qt::CaseInsensitive);
}

QString positionName(const QString& key)
{
    static const QRegularExpression betweenBlanks(QStringLiteral("\\s(\\w)\\s"),
                                                  QRegularExpression::UseUnicodePropertiesOption);
    return betweenBlanks.match(key).captured(1);
}

} // namespace ovparser::internal
