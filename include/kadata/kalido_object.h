#pragma once

// The base of the records, and the one form that texts have in their archives (docs/formats.md, "Strings").

#include <afx.h>
#include <kadata/export.h>

class KADATA_API CKalidoObject : public CObject {
public:
    CKalidoObject();
    ~CKalidoObject() override;

    // Throws the CArchiveException of CArchive when the archive is loading, and whatever its file throws.
    static void WriteString(CArchive& archive, const CString& text);

    // Reads the wide form and the older 8-bit form, which is in the ANSI code page. An archive that ends too early, be it in the
    // length, and a length above 2,147,483,647 throw CArchiveException::endOfFile, an archive that is storing throws
    // CArchiveException::writeOnly. `text` changes only when all of it has been read. No more memory is taken than
    // twice what has arrived, and 4 KiB.
    static void ReadString(CArchive& archive, CString& text);

protected:
    // The older length: 1, 3 or 7 bytes. 0xFFFFFFFF when the mark of the wide form stood in its place; the length follows then.
    // CArchiveException::writeOnly when the archive is storing.
    static unsigned int ReadStringLength(CArchive& archive);
};
