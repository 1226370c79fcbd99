#pragma once

/// What the view request dialog and the host hand each other.
namespace KorDSMRequestQueue {

/// Name of the exchange queue, and of its integers: the key of a view request, in and out, and the source
/// that the chosen one comes from, out.
inline constexpr const char* kQueue = "REQUESTDIALOG";
inline constexpr const char* kKey = "RequestKey";
inline constexpr const char* kDSN = "DSNForRequestKey";
inline constexpr const char* kIndex = "IdxForRequestKey";

/// The key of the view request that the host wants to be selected; 0 for none.
int wantedKey();
/// Hands over the chosen view request, of the source that is current.
void put(int key);

} // namespace KorDSMRequestQueue
