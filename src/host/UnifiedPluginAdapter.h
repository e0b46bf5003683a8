#pragma once

#include <iosfwd>
#include <memory>
#include <sstream>

#include "core/CriticalSection.h"
#include "plugin/GenericPlugin.h"
#include "processor/frame/GenericPluginProcessor.h"

namespace cinder {

/// The one path between the two halves of an instance, whatever the host is. A binding derives and
/// gives two operations: how the host is told of the latency, and of a value.
///
///     host or interface -> plug-in -> adapter -> host, which echoes -> plug-in and processor
///     preset, state, undo -> plug-in -> adapter -> processor, all values at one block; and host
///
/// State   both halves, and the lock that guards every crossing towards the processor. Inside it
///         the locks of real-time sources are taken, and the listener's, one after the other
/// Errors  none
class UnifiedPluginAdapter : public GenericPlugin::Adapter,
                             public GenericPluginProcessor::ProcessorAdapter {
public:
    ~UnifiedPluginAdapter() override;
    UnifiedPluginAdapter(const UnifiedPluginAdapter&) = delete;
    UnifiedPluginAdapter& operator=(const UnifiedPluginAdapter&) = delete;

    // For the plug-in. [ui]
    void controllerMapChanged() override;
    void sendMidiMessage(const MidiEvent& event) override;
    void parameterChanged(int id, bool refresh) override;
    void presetChanged(int) override {}
    void transferRealtimeData(unsigned elapsedMs) override;

    // For the processor. [audio]
    void programChanged(int bank, int program) noexcept CINDER_REALTIME override;
    void midiProcessed(int lastController) noexcept CINDER_REALTIME override;
    void parameterValueChanged(int index) noexcept CINDER_REALTIME override;

    /// Values and instance, without what the binding adds. Whatever values are applied have reached
    /// the processor when this returns, with a discontinuity, also if the rest is refused.
    /// [ui, host]
    bool readPluginSections(std::istream& stream);

protected:
    UnifiedPluginAdapter();

    /// Both are owned from here on. The adapter is known to the plug-in at once, to the processor
    /// by `start`.
    void setHalves(std::unique_ptr<GenericPlugin> newPlugin,
                   std::unique_ptr<GenericPluginProcessor> newProcessor);
    /// The processor takes over rate, controller map and values.
    void start();
    void copyControllerMap();
    /// All values in one block; with a discontinuity, those that it did not have jump.
    void syncProcessor(bool discontinuity);

    std::unique_ptr<CriticalSection> lock;
    std::unique_ptr<GenericPluginProcessor> processor;
    std::unique_ptr<GenericPlugin> plugin;

private:
    std::stringstream transferStream;  // keeps its storage from one transfer to the next
};

}  // namespace cinder
