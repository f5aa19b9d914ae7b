#pragma once

// The workstation's persistent settings.
//
// They lie in the system's registry below "Software\Kalido Dental Systems\": what belongs to the user in HKEY_CURRENT_USER, what
// belongs to the installation in HKEY_LOCAL_MACHINE. Positions and visibility of windows are kept for each screen resolution, so
// that a layout made for one screen is not taken to another.

#include <afx.h>
#include <atltypes.h>
#include <kadata/export.h>
#include <kadata/patient.h>

// One product's settings. A read gives the default when there is no such value, it has another type, or it may not be read; a
// write creates missing keys and returns FALSE when a key cannot be created (no rights, a name over 255 characters between
// backslashes) or the value cannot be set. Nothing throws but for want of memory.
//
// Nothing is kept in the object: what any program has written is read at once. Reading and writing is safe on every thread, the
// members that change the object itself (SetRegistryRoot, SetTransaction, SetRegistryView) are not.
//
// Values: numbers are REG_DWORD. Texts are written as REG_SZ; a REG_EXPAND_SZ is read too, as it stands. A text ends at its first
// zero, or where the value ends. Rectangles are texts: left, top, right, bottom as unsigned numbers, so that -8 is 4294967288.
class KADATA_API CKalidoRegistry {
public:
    // `product` is the sub-key below "Software\Kalido Dental Systems\".
    explicit CKalidoRegistry(const CString& product);
    CKalidoRegistry(const CKalidoRegistry&) = delete;
    CKalidoRegistry& operator=(const CKalidoRegistry&) = delete;

    // The whole path of the product's key, in both hives.
    void SetRegistryRoot(const CString& root) { m_Root = root; }
    const CString& GetRegistryRoot() const { return m_Root; }

    // Reads, writes and removals take part in the transaction while it is set (null: none); the caller begins, commits and closes
    // it. Where the system has no transacted registry functions they do not.
    void SetTransaction(HANDLE transaction) { m_Transaction = transaction; }
    HANDLE GetTransaction() const { return m_Transaction; }
    // KEY_WOW64_32KEY or KEY_WOW64_64KEY for the settings of programs of that width; 0, at first, for the own ones.
    void SetRegistryView(REGSAM view) { m_View = view; }
    REGSAM GetRegistryView() const { return m_View; }

    // Deliberate: the virtual functions up to WriteToolbarPos stand in the order in which hosts expect them.

    // Of the current resolution. A rectangle is the placement in pixels; show commands are those of ShowWindow.
    virtual int GetMainFrameShowCmd() const;  // 3 (maximised)
    virtual BOOL WriteMainFrameShowCmd(int showCmd);
    virtual CRect GetMainFramePos(const CRect& defaultPos) const;
    virtual BOOL WriteMainFramePos(const CRect& pos);
    virtual int GetShowStatusBar() const;  // 1
    virtual BOOL WriteShowStatusBar(int show);
    virtual int GetShowProgressBar() const;  // 2
    virtual BOOL WriteShowProgressBar(int show);
    virtual int GetShowSplittedProgressBar() const;  // 1
    virtual BOOL WriteShowSplittedProgressBar(int show);
    virtual int GetShowProgressBarCaption() const;  // 1
    virtual BOOL WriteShowProgressBarCaption(int show);
    // A window is known by a name of the host's choice; a backslash in it makes a key below.
    virtual BOOL WriteWindowPos(const CString& window, const CRect& pos);
    virtual CRect GetWindowPos(const CString& window, const CRect& defaultPos) const;
    // TRUE also when there was none.
    virtual BOOL ClearWindowPos(const CString& window);
    virtual BOOL WriteShowWindow(const CString& window, int show);
    virtual int GetShowWindow(const CString& window, int defaultShow) const;
    virtual int GetToolbarStyle(const CString& toolbar, int defaultStyle) const;
    virtual BOOL WriteToolbarStyle(const CString& toolbar, int style);
    virtual CRect GetToolbarPos(const CString& toolbar) const;  // empty
    virtual BOOL WriteToolbarPos(const CString& toolbar, const CRect& pos);

    // The data folder of the running program, whatever the product; "..\Data\" by default. With `resolve` non-zero a path that
    // is not absolute is resolved against the program's folder and ends with a backslash: one that begins with a backslash lies
    // on the program's drive; in any other, "." is dropped and ".." removes a folder, up to the root of the drive. Absolute is
    // what begins with a letter and a colon, or with two backslashes, and is longer than that; it is returned as it stands.
    virtual CString GetDataPath(BOOL resolve) const;
    virtual BOOL WriteDataPath(const CString& path);
    // "GER" by default; an empty text is a language of its own.
    virtual CString GetLanguage() const;
    // For GetLanguage's D, GER, US, UK, F, E, I, J, RUS and NL, in capitals; the user's default language for any other text.
    virtual LANGID GetLanguageID() const;
    // The names trimmed, birthday, number, and where there is no number the external id; nothing else of a patient is kept. What
    // was written is what is read, but where two patients are written alike: a comma with a blank behind it ends the surname,
    // and the first "@" that a valid rest follows ends the names (config/last_patient.h).
    virtual CPatient GetLastPatient() const;
    virtual BOOL WriteLastPatient(const CPatient& patient);

    // Declared behind the others for their order.
    virtual ~CKalidoRegistry();

    int GetDatabase() const;  // 0
    BOOL WriteDatabase(int database);
    // Name of the data source that all products share; where none is set the imaging software's, and "PDATA" where that says
    // nothing. That one is cut to 260 characters.
    CString GetDataBaseName() const;

    // The patient lists' profiles. The value is named prefix, index, suffix: "Column.3.Name".
    CString GetPatientProfileEntry(const CString& profile, const CString& prefix, UINT index, const CString& suffix,
                                   const CString& defaultText) const;
    BOOL WritePatientProfileEntry(const CString& profile, const CString& prefix, UINT index, const CString& suffix,
                                  const CString& text);
    BOOL GetPatientProfileAutoGenerate() const;  // FALSE; TRUE for any number but 0
    BOOL WritePatientProfileAutoGenerate(BOOL enable);
    CString GetPatientProfileAutoGenerateDefaultName() const;  // empty
    BOOL WritePatientProfileAutoGenerateDefaultName(const CString& name);

    // A setting that all products share, on the local machine.
    CString GetCommonProfileString(LPCTSTR section, LPCTSTR name, LPCTSTR defaultText) const;

    // Folder of the imaging software, without a backslash at its end: that of the local server registered for its COM class;
    // "C:\Quintar" without one.
    static CString GetQuintarRootDirectory();
    // Its "KaFileDB.ini" there.
    static CString GetQuintarFileDbIni();
    // Empty without one.
    static CString GetIEVersion();
    // The name by which the shell and its file dialogs know the folder of all drives.
    static CString GetMyComputerDirectory();
    // Takes away the sound that the user's default scheme plays when something is selected. TRUE also when there was none.
    static BOOL ResetVistaCCSelectNotifySound();

protected:
    // The helpers. A key is the root, the object's own unless one is given, and below it the section ("Settings\Sub"; empty
    // is the root itself). Null counts as an empty text.
    int GetProfileIntW(LPCTSTR root, LPCTSTR section, LPCTSTR name, int defaultValue, HKEY hive) const;
    int GetProfileIntW(LPCTSTR section, LPCTSTR name, int defaultValue, HKEY hive) const;
    BOOL WriteProfileInt(LPCTSTR root, LPCTSTR section, LPCTSTR name, int value, HKEY hive) const;
    BOOL WriteProfileInt(LPCTSTR section, LPCTSTR name, int value, HKEY hive) const;
    CString GetProfileStringW(LPCTSTR root, LPCTSTR section, LPCTSTR name, LPCTSTR defaultText, HKEY hive) const;
    CString GetProfileStringW(LPCTSTR section, LPCTSTR name, LPCTSTR defaultText, HKEY hive) const;
    // A null text removes the value, a null name the section with all its values; TRUE also when there was none. A section that
    // has others below it is not removed.
    BOOL WriteProfileStringW(LPCTSTR root, LPCTSTR section, LPCTSTR name, LPCTSTR text, HKEY hive) const;
    BOOL WriteProfileStringW(LPCTSTR section, LPCTSTR name, LPCTSTR text, HKEY hive) const;

    // Of the current user. The default is returned for a text that is no rectangle.
    CRect GetProfileRect(LPCTSTR section, LPCTSTR name, const CRect& defaultRect) const;
    BOOL WriteProfileRect(LPCTSTR section, LPCTSTR name, const CRect& rect) const;

    // The same below "ScreenPos\RESOLUTION".
    CRect GetScreenProfileRect(LPCTSTR section, LPCTSTR name, const CRect& defaultRect) const;
    BOOL WriteScreenProfileRect(LPCTSTR section, LPCTSTR name, const CRect& rect) const;
    int GetScreenProfileInt(LPCTSTR section, LPCTSTR name, int defaultValue) const;
    BOOL WriteScreenProfileInt(LPCTSTR section, LPCTSTR name, int value) const;
    // A null name removes the section. TRUE also when there was none.
    BOOL ClearScreenProfileEntry(LPCTSTR section, LPCTSTR name) const;

    // The primary screen's "1920x1080". A host that arranges its windows for something else, several screens for example,
    // names that here.
    virtual CString GetScreenResolutionString() const;

private:
    CString ScreenSection(LPCTSTR section) const;

    CString m_Root;
    HANDLE m_Transaction = nullptr;
    REGSAM m_View = 0;
};
