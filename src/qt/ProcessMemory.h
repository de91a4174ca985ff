#pragma once

namespace kelvara::qt {

/// Lets all threads allocate from one heap. A program whose threads hardly allocate would only pay
/// for further heaps with memory. To be called before the first thread starts; does nothing where
/// the system has no such choice.
void UseOneHeap();

/// Gives the memory that is allocated no more back to the system, as far as the system has a call
/// for it.
void ReturnFreeMemory();

}  // namespace kelvara::qt
