#include "Capabilities.h"

#include "SectionAccess.h"

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

/** What must be true of the description, or of a flag that an earlier row has derived. */
struct Condition
{
    enum Kind { None, Yes, Present, NotNegative, Contains, Set, Clear };

    Kind kind = None;
    QLatin1String key;
    QLatin1String text;
    Flag flag = nullptr;
};

enum Systems { AnySystem, Standard, Vexa200 };

enum Effect {
    Raise,  ///< the flag becomes true when every condition holds, else it stays
    Assign, ///< the flag becomes whether every condition holds
};

struct Row
{
    Flag flag = nullptr;
    Effect effect = Raise;
    Systems systems = AnySystem;
    Condition conditions[4];
};

constexpr Condition yes(QLatin1String key)
{
    return {Condition::Yes, key, {}, nullptr};
}

constexpr Condition present(QLatin1String key)
{
    return {Condition::Present, key, {}, nullptr};
}

constexpr Condition notNegative(QLatin1String key)
{
    return {Condition::NotNegative, key, {}, nullptr};
}

constexpr Condition contains(QLatin1String key, QLatin1String text)
{
    return {Condition::Contains, key, text, nullptr};
}

constexpr Condition set(Flag flag)
{
    return {Condition::Set, {}, {}, flag};
}

constexpr Condition clear(Flag flag)
{
    return {Condition::Clear, {}, {}, flag};
}

/** Flags that start anew with every derivation. */
constexpr Flag recomputed[] = {
    &State::fluorescentKitInstalled, &State::aurora,       &State::princetonAurora,
    &State::trayInstalled,           &State::ct,           &State::kestrel,
    &State::omegaInstalled,          &State::omegaOutput2, &State::emissionWheel2Installed,
    &State::transportBedSupported,
};

// clang-format off
/** How the capabilities follow from the description, row by row and in this order. */
constexpr Row rows[] = {
    {&State::usbIoBoardInstalled,     Raise,  AnySystem, {yes(Key::UsbIoBoard)}},
    {&State::uacBoardInstalled,       Raise,  AnySystem, {yes(Key::UacBoard)}},
    {&State::spinnerDeviceActive,     Raise,  AnySystem, {yes(Key::CorvixImager)}},
    {&State::spinnerInstalled,        Raise,  AnySystem, {yes(Key::CorvixImager)}},
    {&State::chipReaderInstalled,     Raise,  AnySystem, {yes(Key::ChipReader)}},
    {&State::xrayInstalled,           Assign, AnySystem, {yes(Key::XRayController)}},
    {&State::largeAnimalCapable,      Assign, AnySystem, {present(Key::XRay2PositionC)}},
    {&State::emissionWheel2Installed, Raise,  AnySystem, {present(Key::Filter2MotorDriver)}},
    {&State::emissionWheel2Installed, Raise,  AnySystem, {present(Key::EmFilter2MotorDriver)}},
    {&State::fluorescentKitInstalled, Assign, AnySystem, {yes(Key::FluorescenceKit)}},
    {&State::bl,                      Raise,  Vexa200,   {clear(&State::fluorescentKitInstalled)}},
    {&State::aurora,                  Raise,  Vexa200,   {present(Key::FluorescenceXMotorDriver),
                                                              present(Key::FluorescenceYMotorDriver),
                                                              set(&State::fluorescentKitInstalled)}},
    {&State::princetonAurora,         Raise,  Vexa200,   {contains(Key::CameraSystemInfo, Value::Sophia)}},
    {&State::trayInstalled,           Raise,  AnySystem, {present(Key::FiducialMiddle)}},
    {&State::trayInstalled,           Raise,  AnySystem, {present(Key::FiducialFront)}},
    {&State::trayInstalled,           Raise,  AnySystem, {present(Key::FiducialMiddleFront)}},
    {&State::trayInstalled,           Raise,  AnySystem, {present(Key::FiducialMiddleBack)}},
    {&State::trayInstalled,           Raise,  AnySystem, {present(Key::FiducialBack)}},
    {&State::ct,                      Raise,  Vexa200,   {notNegative(Key::RotationStageMotorDriver)}},
    {&State::kestrel,                 Raise,  AnySystem, {contains(Key::CameraSystemInfo, Value::Du88)}},
    {&State::kestrel,                 Raise,  AnySystem, {contains(Key::CameraCcdType, Value::Emccd)}},
    {&State::tesselHT,                Raise,  Standard,  {set(&State::emissionWheel2Installed)}},
    {&State::transportBedSupported,   Raise,  Vexa200,   {set(&State::aurora)}},
    {&State::transportBedSupported,   Raise,  Vexa200,   {yes(Key::MouseImagingShuttle)}},
    {&State::sideMirrorChecked,       Raise,  Vexa200,   {yes(Key::SideViewMirrorEnabled),
                                                              present(Key::StageOffset),
                                                              present(Key::MirrorXOffset),
                                                              present(Key::MirrorAngle)}},
};
// clang-format on

/** What the value for the omega controller says, lower-cased. */
struct OmegaRow
{
    QLatin1String value;
    bool output2 = false;
};

constexpr OmegaRow omegaRows[] = {
    {Value::OmegaCni32, true},
    {Value::OmegaOutput2, true},
    {Value::Yes, false},
    {Value::OmegaOutput1, false},
};

bool holds(const Condition& condition, const CPLSection& section, const State& state)
{
    switch (condition.kind) {
    case Condition::None:
        return true;
    case Condition::Yes:
        return readsYes(section, condition.key);
    case Condition::Present:
        return hasKey(section, condition.key);
    case Condition::NotNegative:
        return integerOf(section, condition.key, -1) >= 0;
    case Condition::Contains:
        return valueOf(section, condition.key).contains(condition.text, Qt::CaseInsensitive);
    case Condition::Set:
        return state.*condition.flag;
    case Condition::Clear:
        return !(state.*condition.flag);
    }
    return false;
}

void applyRow(const Row& row, const CPLSection& section, InstrumentState& state)
{
    const bool fits = row.systems == AnySystem ||
                      (row.systems == Standard && state.systemType == eVEXA_STANDARD) ||
                      (row.systems == Vexa200 && state.systemType == eVEXA_200);
    const bool result = fits && std::all_of(std::begin(row.conditions), std::end(row.conditions),
                                            [&](const Condition& condition) {
                                                return holds(condition, section, state);
                                            });
    if (result || row.effect == Assign)
        state.*row.flag = result;
}

void deriveOmega(const CPLSection& section, InstrumentState& state)
{
    const QString value = valueOf(section, Key::OmegaController);
    for (const OmegaRow& row : omegaRows) {
        if (value.compare(row.value, Qt::CaseInsensitive) == 0) {
            state.omegaInstalled = true;
            state.omegaOutput2 = row.output2;
            return;
        }
    }
    // Without a value that says so, a VEXA 200 has one, and so has an instrument with a board.
    state.omegaInstalled = (state.systemType == eVEXA_200 && value.isEmpty()) ||
                           state.usbIoBoardInstalled || state.uacBoardInstalled;
}

void deriveDoor(const CPLSection& section, InstrumentState& state)
{
    const bool oldTray =
        valueOf(section, Key::ElectronicsTrayPartNumber) == Value::OldElectronicsTray;
    state.doorClosedOnZeroStatus =
        !state.usbIoBoardInstalled && state.systemType != eVEXA_200 && !oldTray;
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
    return valueOf(section, key).compare(Value::Yes, Qt::CaseInsensitive) == 0;
}

void deriveCapabilities(const CPLSection& section, InstrumentState& state)
{
    state.electronicsTrayPartNum = integerOf(section, Key::ElectronicsTrayPartNumber, 0);
    state.polarity = integerOf(section, Key::LightsControlPolarity, -1);
    state.structureLaserDelay =
        state.systemType == eVEXA_200 ? integerOf(section, Key::StructuredLightDelay, 0) : 0;
    for (const Flag flag : recomputed)
        state.*flag = false;
    for (const Row& row : rows)
        applyRow(row, section, state);
    deriveOmega(section, state);
    deriveDoor(section, state);
}

} // namespace ovparser::internal
