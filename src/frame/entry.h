// The entry of every export and the table behind it.
//
// An export's line in src/exports/<topic>.inc, ORPS_EXPORT(name, implementation), is read once for each vector width,
// where it converts the implementation to the type of the public prototype (which deduces the template arguments and
// rejects a signature that differs), and once more for the slots and the entry: frame/exports-inl.h. A file without
// widths reads its table through frame/entry_plain.h.
#pragma once

#include "orpsp/types.h"

// Row and column of the slots in one number: 2 * row + VariantIndex, rows 128, 256 and 512 bits.
#define ORPS_SLOT_COUNT 6

extern "C" {
// Written while the library is being loaded, never again.
extern Orp32s VariantIndex;   // 0 "u8", 1 "n8"
extern Orp32s ownEntryIndex;  // the slot that every entry jumps through
}

// Without optimisation the compiler writes its data around this assembler and must find its section again. COFF has no
// stack of sections, so that the Windows build is an optimised one, where assembler comes first.
#if defined(_WIN32)
#define ORPS_ENTRY_BEGIN(name) ".text\n.def " #name "; .scl 2; .type 32; .endef\n"
#define ORPS_ENTRY_END(name) ".section .drectve,\"yn\"\n.ascii \" -export:" #name "\"\n.text\n"
#else
#define ORPS_ENTRY_BEGIN(name) ".pushsection .text\n.type " #name ", @function\n"
#define ORPS_ENTRY_END(name) ".size " #name ", .-" #name "\n.popsection\n"
#endif

// The entry: transparent for every signature, since neither argument registers nor the stack are touched.
#define ORPS_ENTRY(name, ...)                                                                  \
  extern "C" {                                                                                 \
  extern decltype(&::name) const slots_##name[ORPS_SLOT_COUNT];                                \
  __attribute__((used)) decltype(&::name) const slots_##name[ORPS_SLOT_COUNT] = {__VA_ARGS__}; \
  }                                                                                            \
  __asm__(ORPS_ENTRY_BEGIN(name) ".p2align 5\n.globl " #name "\n" #name                        \
                                 ":\n"                                                         \
                                 ".cfi_startproc\n"                                            \
                                 "movl ownEntryIndex(%rip), %eax\n"                            \
                                 "leaq slots_" #name                                           \
                                 "(%rip), %r11\n"                                              \
                                 "jmp *(%r11,%rax,8)\n"                                        \
                                 ".cfi_endproc\n" ORPS_ENTRY_END(name))
