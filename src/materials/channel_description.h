// SPDX-License-Identifier: MIT
#pragma once

class BaseContainer;
class Description;
struct Channel;
struct SpectrumNumbers;

/// Adds the parameters of a numbered channel to its group: they share one layout and one set of labels, so no
/// resource lists them.
void describeNumberedChannel(const Channel& channel, Description& description);

/// Shows of a spectrum the parameters of its type.
void showSpectrumType(const SpectrumNumbers& numbers, const BaseContainer& data, Description& description);
/// The same for a numbered channel, with the lines between its parts.
void showChannelSpectrum(const Channel& channel, const BaseContainer& data, Description& description);
