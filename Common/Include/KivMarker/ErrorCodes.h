/// Error words of the marker library.
///
/// Many operations report through a last parameter `short *error`: it receives k_no_error on
/// success and one of the other values on failure. A null pointer is allowed: the caller then
/// only sees the result.

#ifndef KIVMARKER_ERRORCODES_H
#define KIVMARKER_ERRORCODES_H

namespace KivSystem {

enum MarkerErrorCode : short
{
    k_no_error = 0,
    k_error_index = 1,   ///< an index past the end, or below its first value
    k_error_missing = 2, ///< what was asked for does not exist, a null argument among it
    k_error_state = 3,   ///< the object is not in a state that allows the operation
};

/// Stores `code` in `*error` unless the pointer is null.
inline void setErrorCode(short *error, MarkerErrorCode code)
{
    if (error != nullptr) {
        *error = code;
    }
}

} // namespace KivSystem

#endif
