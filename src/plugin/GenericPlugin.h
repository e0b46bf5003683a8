#pragma once

#include <atomic>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/NotifyEvent.h"
#include "midi/MidiMessageReceiver.h"
#include "params/GenericPluginBase.h"
#include "plugin/InterfaceThread.h"
#include "plugin/RealtimeCopies.h"
#include "plugin/SharedObjects.h"
#include "plugin/UpdateBrackets.h"
#include "plugin/history/UndoHistory.h"
#include "presets/ParameterCollection.h"
#include "state/chunks/ParameterState.h"

namespace cinder {

/// The half of an instance that is not real-time: the parameters that are edited, automated and
/// stored, the identity of the preset, undo and A/B, and what all instances share. The processor is
/// its partner and has parameters of its own; all that passes between the two passes through the
/// adapter.
///
/// A product derives and, at the end of its constructor, calls `init`, fills its component
/// collections and calls `loadDefaultPreset`.
///
/// Shape   any thread may set values. Each change is told at once, or, within an update bracket,
///         all changes as one at the end of it
/// State   the parameters, read without a lock; identity, counts and flags are safe as well. What
///         is shared with other instances is under the instance lock
/// Errors  a load that fails leaves the values as far as it got, and the identity alone
class GenericPlugin : public GenericPluginBase, public MidiMessageReceiver, private HistorySubject {
public:
    using StateList = cinder::StateList;
    using UndoHistory = cinder::UndoHistory;
    using CompareStates = cinder::CompareStates;

    /// The host, as the plug-in sees it.
    class Adapter {
    public:
        virtual void controllerMapChanged() = 0;
        virtual void latencyChanged() = 0;
        /// Of an event that the interface has made.
        virtual void sendMidiMessage(const MidiEvent& event) = 0;
        /// A value has changed here; -1: all of them. `refresh`: as a new state.
        virtual void parameterChanged(int id, bool refresh) = 0;
        virtual void presetChanged(int reserved) = 0;
        virtual void transferRealtimeData(unsigned elapsedMs) = 0;
        virtual ~Adapter() = default;
        virtual void setHostParameter(int id, float value) = 0;
    };

    /// What a listener is told, with a number.
    enum Notification : int {
        valueNotification = -1025,          ///< the id, or -1 for all
        presetNotification = -1026,         ///< name, path or flag of the preset
        controllerNotification = -1027,     ///< a MIDI controller came by, its number
        stateNotification = -1028,          ///< undo, redo or A/B has restored a state
        controllerMapNotification = -1029,  ///<
        instanceNameNotification = -1031,   ///<
    };

    /// The open window.
    class Listener {
    public:
        /// What guards the listener's view of the real-time data, or null. [ui]
        virtual CriticalSection* realtimeDataLock() = 0;
        /// Only keeps the pair for the thread of the interface. [any]
        virtual void notify(int code, unsigned value) noexcept CINDER_REALTIME = 0;

    protected:
        ~Listener() = default;
    };

    ~GenericPlugin() override;

    // The owner of the parameters. [any]
    void beginUpdate() override { brackets.begin(); }
    void endUpdate() override;
    void parameterChanged(int id, float value, unsigned flags) override;
    void requestHostRefresh() override { brackets.addAlways(UpdateBrackets::asNewState); }

    // What a product says of itself.
    virtual bool isInterfaceResizable() const { return false; }
    virtual int pluginCategory() const { return 0; }
    virtual int componentPresetVersion(int /*kind*/) const { return 1; }
    virtual std::string defaultPresetName() const { return "Default Setting"; }
    virtual std::string presetExtension() const { return ".knp"; }
    virtual std::string_view productCode() const = 0;
    virtual std::string_view productVersion() const = 0;
    virtual std::int32_t formatVersion() const = 0;  ///< of the presets that it writes
    virtual int contentWidth() const { return 0; }
    virtual int contentHeight() const { return 0; }
    virtual int maximumContentWidth() const { return 0; }
    virtual int maximumContentHeight() const { return 0; }
    virtual bool hasEditorPageTable() const { return false; }

    // The binding. The adapter is set before anything is told.
    void setAdapter(Adapter* newAdapter) { adapter = newAdapter; }
    bool hasAdapter() const { return adapter != nullptr; }
    InterfaceThread& getInterfaceThread() { return interfaceThread; }
    /// Runs what waits for the thread of the interface; how much that was. [ui]
    int dispatchEvents() { return interfaceThread.dispatch(); }
    /// Not while audio runs elsewhere. [host]
    void setSampleRate(float rate);
    float getSampleRate() const { return sampleRate; }
    std::int32_t getLatency() const { return latency; }
    /// A MIDI program change, if the user wants them: loads a preset on the thread of the
    /// interface, that of the last change where several come in a row. Without a queue to that
    /// thread the load happens here. [any]
    void programChanged(int bank, int program) noexcept CINDER_REALTIME;
    /// To the listener, if there is one. [any]
    void notify(int code, unsigned value) noexcept CINDER_REALTIME;
    /// Reads what the processor has written, under the listener's lock. [ui]
    void receiveRealtimeData(BinaryDataReader& reader);
    /// From the interface to the processor. [ui]
    void receiveMidiMessage(const MidiEvent& event) noexcept CINDER_REALTIME override;

    /// With a listener the calling thread becomes that of the interface. When this returns, no call
    /// into the listener before is running. [ui]
    void attachListener(Listener* newListener);
    /// To the host: one value, or all with -1. [any]
    void notifyHost(int id, bool refresh);

    // State. Whether the stream is good. [ui, host]
    bool writePluginState(std::ostream& stream) const;
    /// The values. What it has applied reaches the processor with a discontinuity.
    ParameterStateResult readParameters(std::istream& stream);
    /// What comes behind the values. False, and nothing changes, where the section isn't whole.
    bool readPluginState(std::istream& stream);

    // Presets. [ui]
    bool loadPreset(const PresetEntry& entry);
    /// Past the end of the list, nothing.
    void loadProgram(int bank, int program);
    bool savePresetFile(const PresetEntry& entry, int firstId = -1, int count = -1);
    bool loadComponentPreset(int kind, int index, const std::string& path);
    bool saveComponentPreset(int kind, int index, const std::string& path);
    /// Null for a kind or an index without one.
    ParameterCollection* componentCollection(int kind, int index);
    /// -1: the main one.
    PresetManager* presetManager(int kind) { return shared->presetManager(kind); }
    /// Looks at the disk anew; an empty path is the folder at hand. [ui]
    void rescanPresets(std::string path = {});
    /// Unpacks what the product brings along. [ui]
    bool installFactoryFiles(bool overwrite);
    /// A name from the host; -1 compares it whole. [ui, host]
    void setPresetName(const std::string& name, int compareLength);
    CurrentPreset& getCurrentPreset() override { return currentPreset; }

    // Undo and A/B. [ui]
    UndoHistory& getUndoHistory() { return undoHistory; }
    CompareStates& getCompareStates() { return compareStates; }
    /// A user's action has ended: one step, and of a parameter that is kept outside presets the
    /// value goes into its file.
    void pushUndo(int parameterId);

    // Controller map. [ui] It changes under the instance lock, since instances that come or go on
    // other threads enter themselves with the map.
    virtual void loadControllerMapDefaults();
    bool readControllerMap();
    bool writeControllerMap();
    void assignController(int controller, std::int32_t target);
    ControllerMapping& getControllerMapping() { return shared->controllerMapping; }

    // Settings. [ui]
    Settings& getSettings() { return *settings; }
    SharedSettings& getSharedSettings() { return shared->settings; }
    const SharedSettings& getSharedSettings() const { return shared->settings; }
    const VersionInfo& getVersionInfo() const { return shared->version; }
    const std::string& getHelpFileName() const { return shared->helpFileName; }
    void readSettings() { shared->readSettings(*settings); }
    void writeSettings() { shared->writeSettings(*settings); }

    // The instance's name and number.
    std::string getInstanceName() const;
    std::int32_t getInstanceNumber() const;
    /// Empty: the track's name or the product's, with a number where another instance bears it.
    void updateInstanceName(const std::string& name);
    void setTrackName(const std::string& name);

    ParameterCollection& getParameterCollection() { return parameterCollection; }
    RealtimeCopies& getRealtimeCopies() { return *realtime; }
    static int instanceCount();

protected:
    GenericPlugin(std::int32_t channelLayout, std::uint32_t features,
                  RealtimeCounts realtimeCounts = {});

    /// Joins the process: builds what is shared if this is the first instance, reads the settings.
    void init(const std::string& productName);
    void addComponentCollections(int kind, int count);
    /// The default preset of the user, if there is one.
    void loadDefaultPreset();

    virtual std::unique_ptr<Settings> createSettings();
    /// A product adds its component preset managers behind this.
    virtual void createSharedObjects(const std::string& productName);
    SharedObjects& getShared() { return *shared; }
    /// Within `parameterChanged`, when the value has been applied. -1: many.
    virtual void parameterValueApplied(int /*id*/) {}
    virtual void updateLatency() {}
    /// Announces a latency that is new.
    void setLatency(std::int32_t samples);
    virtual bool readRealtimeData(BinaryDataReader& reader);

    /// What a load of a preset leaves alone.
    ParameterCollection interfaceDefaults;

private:
    enum QueuedEvent : int { latencyEvent = 0, programEvent = 1, parameterEvent = 2 };
    static constexpr int refreshAll = -2;

    // Of the process, guarded by the instance lock.
    inline static std::vector<GenericPlugin*> instances;
    inline static std::unique_ptr<SharedObjects> sharedObjects;

    void setUpFirstInstance();
    void handleQueuedEvent(int event, int argument);
    void controllerMappingChanged(NotifyEvent::Argument);
    void restoreInterfaceDefaults(const std::vector<float>& values);
    void saveInterfaceDefault(int parameterId);
    std::string interfaceDefaultsPath() const;
    void presetIsNew();
    bool isNameFree(const std::string& name) const;
    std::string freeInstanceName() const;
    void takeInstanceNumber(std::int32_t number);

    // HistorySubject
    GenericParameterOwner& historyParameters() override { return *this; }
    int compareSlot() const override { return compareStates.getCurrent(); }
    void stateRestored(bool fileChanged) override;

    Adapter* adapter = nullptr;       // not owned
    SharedObjects* shared = nullptr;  // of the process
    ParameterCollection parameterCollection;
    std::vector<std::vector<ParameterCollection>> componentCollections;  // by kind
    CurrentPreset currentPreset;
    CompareStates compareStates{*this};
    UndoHistory undoHistory{*this, compareStates};
    std::unique_ptr<Settings> settings;
    std::unique_ptr<RealtimeCopies> realtime;

    std::atomic<Listener*> listener{nullptr};  // not owned
    std::atomic<std::int32_t> listenerCalls{0};
    UpdateBrackets brackets;
    std::atomic<std::int32_t> latency{0};  // samples, as last announced
    std::atomic<float> sampleRate{44100.0f};
    bool loadingDefaultPreset = false;

    // Under the instance lock.
    std::int32_t instanceNumber = -1;  // never set
    std::string instanceName, trackName;
    bool autoInstanceName = true;

    // Last, so that nothing is handled any more once the others go.
    InterfaceThread interfaceThread;
};

}  // namespace cinder
