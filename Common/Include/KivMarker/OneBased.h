/// t_1_Based: an index that counts from 1.

#ifndef KIVMARKER_ONEBASED_H
#define KIVMARKER_ONEBASED_H

namespace KivSystem {

class t_1_Based
{
public:
    explicit t_1_Based(short index) : m_index(index) {}

    /// The index, or 0 for one below 1: the 1-based operations of CDbFabricObject have nothing
    /// there.
    short ValidIndex() const { return m_index >= 1 ? m_index : short(0); }

private:
    short m_index;
};

} // namespace KivSystem

#endif
