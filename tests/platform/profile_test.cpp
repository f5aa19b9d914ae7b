#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <iterator>
#include <string>

#include "support/temp_folder.h"
TEST(ProfileProbe, X) {
    using test::Narrow;
    const test::TempFolder f;
    auto get=[&](const test::Text& file,const TCHAR* s,const TCHAR*k,const TCHAR*d,DWORD size=400){
        TCHAR buf[500]; std::fill(std::begin(buf),std::end(buf),TCHAR('~')); SetLastError(777);
        DWORD n=GetPrivateProfileStringW(s,k,d,buf,size,file.c_str()); DWORD e=GetLastError();
        std::string shown; for(DWORD i=0;i<std::min<DWORD>(n+3,size+1);++i) shown+= buf[i]==0?'|':buf[i]<128?char(buf[i]):'U';
        printf("PROBE n=%u e=%u %s\n",unsigned(n),unsigned(e),shown.c_str());
    };
    auto sec=[&](const test::Text& file,const TCHAR* s,DWORD size=400){
        TCHAR buf[500]; std::fill(std::begin(buf),std::end(buf),TCHAR('~')); SetLastError(777);
        DWORD n=s?GetPrivateProfileSectionW(s,buf,size,file.c_str()):GetPrivateProfileSectionNamesW(buf,size,file.c_str()); DWORD e=GetLastError();
        std::string shown; for(DWORD i=0;i<std::min<DWORD>(n+3,size+1);++i) shown+= buf[i]==0?'|':buf[i]<128?char(buf[i]):'U';
        printf("PROBE S n=%u e=%u %s\n",unsigned(n),unsigned(e),shown.c_str());
    };
    const auto a=f.Write(_T("a.ini"),"outside=1\r\n ; c\r\n[ Ab ] x\r\n k1 =  v 1  \r\nk2=\"q v\"\n\tK3='s'\r\nk4=\"'x'\"\r\nbare\r\nempty=\r\nk5=a ; c\r\n=novalue\r\n;k6=1\r\nk7=\"a\r\nk8=a\"b\r\nk1=dup\r\n\r\n[next]\r\na=1\r\n[ab]\r\nk9=9\r\n[open\r\nz=1\r\n[]\r\nee=1\r\n[a]b]\r\nq=\"\"\r\nr=\"\r\ns=\" x \"\r\nt= \"x\" y\r\n");
    for (const TCHAR* k : {_T("k1"),_T("K2"),_T("k3"),_T("k4"),_T("bare"),_T("empty"),_T("k5"),_T("k6"),_T("k7"),_T("k8"),_T("k9"),_T(" k1 "),_T("") }) get(a,_T("ab"),k,_T(" def "));
    get(a,_T(" AB "),_T("k1"),_T("def")); get(a,_T("[ab]"),_T("k1"),nullptr); get(a,_T(" Ab "),_T("k1"),_T("def"));
    get(a,_T("a]b"),_T("q"),_T("d"));get(a,_T("a"),_T("q"),_T("d"));get(a,_T("a"),_T("r"),_T("d"));get(a,_T("a"),_T("s"),_T("d"));get(a,_T("a"),_T("t"),_T("d")); get(a,_T(""),_T("ee"),_T("d")); get(a,_T("open"),_T("z"),_T("d"));get(a,_T("ab"),_T("z"),_T("d"));get(a,_T(""),_T("outside"),_T("d"));
    get(a,nullptr,_T("x"),_T("def")); get(a,_T("ab"),nullptr,_T("def")); get(a,_T("none"),nullptr,_T("def")); get(a,_T("next"),nullptr,_T("def"));get(a,nullptr,nullptr,_T("def"),10);get(a,_T("ab"),nullptr,_T("def"),10);
    for(DWORD s: {0u,1u,2u,3u,4u,5u,6u}) { printf("size %u\n",unsigned(s)); get(a,_T("ab"),_T("k1"),_T("d"),s); get(a,nullptr,nullptr,_T("d"),s); get(a,_T("next"),nullptr,_T("d"),s); sec(a,_T("next"),s); sec(a,nullptr,s);}
    get(f.Path(_T("none.ini")),_T("s"),_T("k"),_T("def  ")); get(f.Path(_T("none.ini")),nullptr,_T("k"),_T("def  ")); get(f.Path(_T("no\\none.ini")),_T("s"),_T("k"),nullptr); get(f.Path(),_T("s"),_T("k"),_T("d"));
    get(f.Path(_T("none.ini")),nullptr,nullptr,_T("def"),3);get(a,_T("none"),nullptr,_T("def"),3);
    sec(a,_T("ab"));sec(a,_T("ab"),20);sec(a,nullptr);sec(a,_T("none"));sec(f.Path(_T("none.ini")),_T("s"));sec(f.Path(_T("none.ini")),nullptr);sec(a,_T("a"));
    const auto b=f.Write(_T("b.ini"),"[n]\na=12\nb=-5\nc=0x1F\nd=12x\ne=x\nf=\ng=\" 7\"\nh=+4\ni=4294967297\nj=99999999999\nk=0b11\nl=0o17\nm=0X1f\nn=- 5\no=-0x2\np=0x\nq=010\nr=\"9\"\n");
    for (const TCHAR* k=_T("abcdefghijklmnopqrstz");*k;++k){TCHAR kk[2]={*k,0};SetLastError(777);UINT v=GetPrivateProfileIntW(_T("n"),kk,-77,b.c_str());printf("PROBE I %c %d e=%u\n",char(*k),int(v),unsigned(GetLastError()));}
    auto wr=[&](const TCHAR* name,const TCHAR*s,const TCHAR*k,const TCHAR*v){SetLastError(777);BOOL r=WritePrivateProfileStringW(s,k,v,name?f.Path(name).c_str():nullptr);DWORD e=GetLastError();std::string t;if(name&&f.Has(name)){for(char c:f.Read(name)){t+= c=='\r'?'R':c=='\n'?'N':c==0?'0':c;}}printf("PROBE W r=%d e=%u %s\n",r,unsigned(e),t.c_str());};
    wr(_T("w.ini"),_T("S"),_T("k"),_T("v")); wr(_T("w.ini"),_T("s"),_T("K"),_T(" w ")); wr(_T("w.ini"),_T("T"),_T("a"),_T("\"1\"")); wr(_T("w.ini"),_T("S"),_T("z"),_T("2"));wr(_T("w.ini"),_T("S"),_T("k"),nullptr);wr(_T("w.ini"),_T("S"),_T("k"),nullptr);wr(_T("w.ini"),_T("no"),_T("k"),nullptr);wr(_T("w.ini"),_T("no"),nullptr,nullptr);wr(_T("w.ini"),_T("t"),nullptr,_T("x"));wr(_T("w.ini"),nullptr,_T("k"),_T("v"));wr(_T("w.ini"),nullptr,nullptr,nullptr);wr(_T("no\\w.ini"),_T("S"),_T("k"),_T("v"));wr(_T("w2.ini"),_T("S"),_T("k"),nullptr);wr(_T("w3.ini"),_T("S"),nullptr,nullptr);wr(_T("w.ini"),_T(""),_T("k"),_T("v"));wr(_T("w.ini"),_T("S"),_T(""),_T("v"));
    f.Write(_T("c.ini"),"; top\n[s]\n;c\n\n  key one = 1\n\n\n[t]\nx=1"); wr(_T("c.ini"),_T("S"),_T("KEY ONE"),_T("2"));wr(_T("c.ini"),_T("S"),_T("new"),_T("3"));wr(_T("c.ini"),_T("T"),_T("y"),_T("\u00e4\u4e2d"));wr(_T("c.ini"),_T("U"),_T("y"),_T("1"));wr(_T("c.ini"),_T("S"),nullptr,nullptr);
    f.Write(_T("u.ini"),std::string("\xFF\xFE[\0s\0]\0\n\0a\0=\0\x2D\x4E\n\0",18)); get(f.Path(_T("u.ini")),_T("s"),_T("a"),_T("d")); wr(_T("u.ini"),_T("s"),_T("b"),_T("x"));
}
