#include "tin/tin.h"
#include "tin/tin_file/byte_codec.h"
#include "tin/tin_file/mesh_section.h"

using namespace qsv;

int CTin::WriteBIN_VER0(CString strPath)
{
    CFile file;
    if (file.Open(strPath, CFile::modeCreate | CFile::modeWrite) == 0) {
        return 0;
    }
    ByteWriter writer(file);
    WriteMesh(writer, *this);
    WriteReserved(writer);
    writer.Finish();
    return 1;
}

int CTin::ReadBIN_VER0(CString strPath)
{
    InitData();
    CFile file;
    if (file.Open(strPath, CFile::modeRead) == 0) {
        return 0;
    }
    ByteReader reader(file, file.GetLength());
    if (!ReadMesh(reader, *this) || !ReadReserved(reader)) {
        return 0;
    }
    UpdateTinRange();
    UpdateDepth();
    return 1;
}
