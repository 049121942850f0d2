Attribute VB_Name = "QvaReport"
Option Explicit

' Bendra visoms ataskaitoms: ryšys su „Excel“ ir apskaitos knyga, klaidos, ataskaitos įrankių juosta, žurnalas.
' Ataskaitos makrokomanda pradedama „On Error GoTo Nepavyko“ ir „Atverti“, baigiama „Baigti“, o jos gale – „Nepavyko: Klaida Err“.

Public Const qvaMetai = 1               ' langelio RepType reikšmės: ataskaitos laikotarpis
Public Const qvaKetvirtis = 2
Public Const qvaMenuo = 3
Public Const qvaPirmasPusmetis = 4
Public Const qvaAntrasPusmetis = 5
Public Const qvaNustatytas = 6

Public Const qvaKlaida = -2147221504    ' ataskaitos savų klaidų numeriai: qvaKlaida + 1, 2, …

Public Const qvaVisaData = 1            ' CReports.ReadDate: kokios datos klausia
Public Const qvaMetaiIrMenuo = 2
Public Const qvaMetaiIrKetvirtis = 3

Public oExcel As Object              ' ryšys su „Excel“ ir apskaitos knyga; Nothing, kai ataskaita neatverta
Public oJuosta As Object             ' ataskaitos įrankių juosta
Private oJuostos As Object           ' savi, kad kitos atvertos ataskaitos jų nepakeistų: bibliotekoje jie bendri
Private oBusena As Object
Private sZurnalas As String          ' žurnalo failas šalia ataskaitos
Private sPradine As String           ' kokia knyga atverta: išsaugota archyve, ji yra archyvo failas
Private bPakeista As Boolean         ' ar knyga buvo pakeista jau prieš makrokomandą
Private sFormules As String          ' sritis, kurios formules sudarymas pakeičia reikšmėmis; jos lapo slaptažodis ir formulės
Private sSlaptazodis As String
Private vFormules As Variant

' ---- Atidarymas, klaidos ir užvėrimas

' Prisijungia prie apskaitos knygos, sukuria įrankių juostą ir parengia „Excel“ ataskaitai. Jau atverta ataskaita tik
' prisijungia iš naujo, nes tarp dviejų mygtukų galėjo prisijungti ar užsiverti kita.
Public Sub Atverti()
    bPakeista = Not ThisWorkbook.Saved
    ThisWorkbook.Activate
    If Not oExcel Is Nothing Then
        oExcel.InitConnectEX Application, ThisWorkbook, Nothing
        Exit Sub
    End If
    PradetiZurnala
    sPradine = ThisWorkbook.FullName
    Set oExcel = CreateObject("QVA_Varnholt.gExcelObject")
    oExcel.InitConnectEX Application, ThisWorkbook, Nothing
    If oExcel.oMyPlant Is Nothing Then Err.Raise qvaKlaida + 1, "Atverti", "Apskaitos knyga atverta be įmonės objekto."
    Zingsnis "Prisijungta prie apskaitos knygos " & oExcel.oBook.BookCode
    oExcel.InitToolBars
    Set oJuostos = oExcel.oToolBars
    ' Kitos atvertos ataskaitos būsena nėra naudotojo: įsiminta ji liktų ir abi užvėrus.
    If Not oExcel.oEnvironment Is Nothing Then oExcel.oEnvironment.SetDefaultExcelState
    oExcel.InitEnvironment
    Set oBusena = oExcel.oEnvironment
    oBusena.SetDefaultAppState
    IjungtiJuosta
    Zingsnis "Parengta ataskaitos aplinka"
End Sub

' Makrokomandos pabaiga. Sudaryta ataskaita – ne naudotojo pakeitimas: užveriant apie ją neklausiama, kad atsakymas
' „Įrašyti“ nepakeistų nei pradinės knygos, nei kito laikotarpio failo archyve.
Public Sub Baigti()
    If Not bPakeista Then ThisWorkbook.Saved = True
End Sub

' Kiekvienos makrokomandos klaidų tvarkytoja: pirma grąžina naudotojo „Excel“, tada praneša.
Public Sub Klaida(oKlaida As Object)
    Dim nNumeris As Long, sAprasymas As String
    nNumeris = oKlaida.Number
    sAprasymas = oKlaida.Description
    Application.ScreenUpdating = True    ' nutrūkusi makrokomanda galėjo palikti išjungtus
    Application.EnableEvents = True
    Application.DisplayAlerts = True
    If oExcel Is Nothing Then
        MsgBox sAprasymas, vbCritical, ThisWorkbook.Name     ' bibliotekos nėra, pranešti jos langu negalima
        Exit Sub
    End If
    GrazintiExcel
    Zingsnis "KLAIDA: " & sAprasymas
    oKlaida.Number = nNumeris            ' jas išvalė „On Error“
    oKlaida.Description = sAprasymas
    oExcel.ExcelReportError oKlaida
    oExcel.ResetConnectOnError
    Set oExcel = Nothing
    Baigti
End Sub

' Grąžina naudotojo „Excel“ tokį, koks jis buvo, ir atsijungia. Kai knyga užveriama, iškviečiama savaime.
Public Sub Uzverti()
    Dim bIrasyta As Boolean
    bIrasyta = ThisWorkbook.Saved
    If Not oExcel Is Nothing Then GrazintiExcel
    If bIrasyta Then ThisWorkbook.Saved = True Else GrazintiPradine
    If oExcel Is Nothing Then Exit Sub
    oExcel.ResetConnectEX 0
    Set oExcel = Nothing
    Zingsnis "Grąžinta „Excel“ būsena, atsijungta nuo apskaitos knygos"
End Sub

Public Sub Auto_Close()
    Uzverti
End Sub

' Kas nepavyksta, praleidžiama.
Private Sub GrazintiExcel()
    On Error Resume Next
    ThisWorkbook.Activate                        ' rodmuo grąžinamas aktyviame lange
    oBusena.SetDefaultExcelState                 ' prieš ResetEnvironment, kuri grąžina naudotojo nustatymus
    oExcel.ResetEnvironment
    IsjungtiJuosta
    oExcel.ResetToolBars
    Set oJuostos = Nothing
    Set oBusena = Nothing
End Sub

Private Sub IjungtiJuosta()
    Dim nNumeris As Integer
    Dim sMakrokomanda As String
    nNumeris = oJuostos.CreateToolbar(ThisWorkbook.Worksheets("Nustatymai"))
    If nNumeris = 0 Then Err.Raise qvaKlaida + 2, "IjungtiJuosta", "Nustatymų lape trūksta langelių."
    Set oJuosta = oJuostos.Item(nNumeris)
    sMakrokomanda = "EitiIExcel"
    oJuosta.SetAction oJuosta.iExcel, sMakrokomanda
    oJuosta.PositinTop
    oJuosta.VisibleToolbar = True
    Zingsnis "Įrankių juosta „" & oJuosta.Caption & "“: mygtukų " & oJuosta.TotalButtons
End Sub

Private Sub IsjungtiJuosta()
    If oJuosta Is Nothing Then Exit Sub
    oJuostos.cmdGoToAppDelete
    oJuostos.DeleteToolbar oJuosta.IDCollection
    Set oJuosta = Nothing
End Sub

' ---- Formulės ir jų reikšmės

' Formulės vietoj ankstesnio sudarymo reikšmių, neapsaugotame lape. Knygos, įrašytos jau su reikšmėmis, nesudarysi iš naujo:
' kito laikotarpio sumos liktų tos pačios.
Public Sub Atsildyti(ByVal sSritis As String, ByVal sLapoSlaptazodis As String)
    sFormules = sSritis
    sSlaptazodis = sLapoSlaptazodis
    If Not IsEmpty(vFormules) Then
        GrazintiFormules
    ElseIf Sritis(sFormules).Worksheet.ProtectContents Then
        Err.Raise qvaKlaida + 5, "Atsildyti", "Šioje knygoje ataskaita jau užbaigta, jos formulės pakeistos reikšmėmis. Kitą sudarykite iš pradinės knygos."
    Else
        vFormules = Sritis(sFormules).Formula
    End If
End Sub

' Kai užveriant knygą klausiama, ar ją įrašyti. Neišsaugota archyve, ji turi likti ta, iš kurios ataskaita sudaroma.
Private Sub GrazintiPradine()
    On Error Resume Next
    If ThisWorkbook.FullName = sPradine Then GrazintiFormules
End Sub

Private Sub GrazintiFormules()
    If IsEmpty(vFormules) Then Exit Sub
    ApsaugotiLapa False
    Sritis(sFormules).Formula = vFormules
End Sub

' Apsaugo užbaigtos ataskaitos lapą arba apsaugą nuima.
Public Sub ApsaugotiLapa(ByVal bApsaugoti As Boolean)
    Dim oIrankiai As Object
    Set oIrankiai = CreateObject("QVA_Varnholt.CTools")
    oIrankiai.Init Application
    oIrankiai.SheetLock bApsaugoti, sSlaptazodis, Sritis(sFormules).Worksheet.Name
End Sub

' ---- Įrankių juostos mygtukai

Public Sub cmdComment()
    On Error GoTo Nepavyko
    Atverti
    oJuosta.CmdEvent.cmdComment
    Baigti
    Exit Sub
Nepavyko:
    Klaida Err
End Sub

' Užfiksuoja visą ataskaitos antraštę, nuo pirmos eilutės, kad ir kuriame lape būtų naudotojas.
Public Sub cmdFreeze()
    Dim nVirsutine As Integer
    On Error GoTo Nepavyko
    Atverti
    nVirsutine = 1
    Sritis("PirmaEilute").Worksheet.Activate
    oJuosta.CmdEvent.cmdFreeze Sritis("PirmaEilute"), nVirsutine
    Baigti
    Exit Sub
Nepavyko:
    Klaida Err
End Sub

Public Sub cmdHelp()
    On Error GoTo Nepavyko
    Atverti
    RodytiZinyna
    Baigti
    Exit Sub
Nepavyko:
    Klaida Err
End Sub

' Savos juostos, nes oExcel.cmdHelp ima bendrą pirmą juostą. Be žinyno failo ataskaita lieka atverta.
Private Sub RodytiZinyna()
    On Error GoTo Nerodo
    oJuosta.CmdEvent.cmdHelp
    Exit Sub
Nerodo:
    Pranesti "Žinyno parodyti nepavyko: " & Err.Description
End Sub

Private Sub Pranesti(ByVal sTekstas As String)
    Zingsnis sTekstas
    MsgBox sTekstas, vbExclamation, ThisWorkbook.Name
End Sub

' Įprastas „Excel“; į ataskaitą grąžina meniu komanda.
Public Sub EitiIExcel()
    On Error GoTo Nepavyko
    Atverti
    oJuosta.VisibleToolbar = False
    oBusena.SetDefaultExcelState
    oJuostos.cmdGoToAppShow "RestoreApp"
    Zingsnis "Įprastas „Excel“; grąžina komanda „" & oJuostos.cmdGoToAppCaption & "“"
    Baigti
    Exit Sub
Nepavyko:
    Klaida Err
End Sub

Public Sub RestoreApp()
    On Error GoTo Nepavyko
    Atverti
    oJuostos.cmdGoToAppDelete
    oBusena.SetDefaultAppState
    oJuosta.VisibleToolbar = True
    Zingsnis "Grįžta į ataskaitą"
    Baigti
    Exit Sub
Nepavyko:
    Klaida Err
End Sub

' ---- Archyvas

' Įrašo ataskaitą į archyvą. Naudotojui nesutikus pakeisti ankstesnės, SaveDoc taip pat grąžina True; ar įrašyta, pasako
' langelis „Saved“.
Public Sub IssaugotiArchyve(oAtaskaita As Object, rMetai As Object, rDalis As Object, ByVal bVisaData As Boolean)
    Dim bAtlikta As Boolean
    Sritis("Saved").Value = False
    oAtaskaita.SaveDoc rMetai, rDalis, bAtlikta, bVisaData
    Application.DisplayAlerts = True     ' nepavykus įrašyti lieka išjungti
    If bAtlikta And Sritis("Saved").Value Then
        Zingsnis "Išsaugota archyve: " & ThisWorkbook.Name
    Else
        Zingsnis "Neišsaugota"
    End If
End Sub

' ---- Apskaitos knygos duomenys

' Didžiosios knygos sąskaitos pagal kodą: kodas, pavadinimas.
Public Function Saskaitos() As Variant
    Saskaitos = oExcel.oBook.Table("GLAccount").Rows(Array("Code", "Name"))
End Function

' Sąskaitų mėnesių apyvartos pagal sąskaitą ir mėnesį: sąskaita, mėnuo, ar uždarymas, debetas ir kreditas centais.
Public Function Apyvartos() As Variant
    Apyvartos = oExcel.oBook.Table("GLAccountMonth").Rows(Array("AccountCode", "Month", "IsClosing", "Debit", "Credit"))
End Function

' ---- Laikotarpis

' Mėnesių skaičius nuo mėnesio iki mėnesio, abu įskaitant.
Public Function Menesiai(ByVal dNuo As Date, ByVal dIki As Date) As Integer
    Menesiai = (Year(dIki) - Year(dNuo)) * 12 + Month(dIki) - Month(dNuo) + 1
End Function

' Langeliai pagal vardą šioje knygoje, kad ir kuri knyga tuo metu būtų aktyvi.
Public Function Sritis(ByVal sVardas As String) As Object
    Set Sritis = ThisWorkbook.Names.Item(sVardas).RefersToRange
End Function

Public Function LaikotarpioTekstas() As String
    LaikotarpioTekstas = DataTekstu(Sritis("RepCurrPerBeg").Value) & " – " & DataTekstu(Sritis("RepCurrPerEnd").Value)
End Function

Public Function DataTekstu(ByVal dData As Date) As String
    DataTekstu = Format(dData, "yyyy-mm-dd")
End Function

' „gruodžio“
Public Function MenesioKilmininkas(ByVal nMenuo As Integer) As String
    MenesioKilmininkas = Split("sausio,vasario,kovo,balandžio,gegužės,birželio,liepos,rugpjūčio,rugsėjo,spalio,lapkričio,gruodžio", ",")(nMenuo - 1)
End Function

' ---- Žurnalas

Private Sub PradetiZurnala()
    Dim sVardas As String
    sZurnalas = ""
    If ThisWorkbook.Path = "" Then Exit Sub      ' neišsaugota knyga aplanko dar neturi
    sVardas = ThisWorkbook.Name
    sZurnalas = ThisWorkbook.Path & Application.PathSeparator & Left(sVardas, InStrRev(sVardas, ".") - 1) & ".log"
    If Dir(sZurnalas) <> "" Then Kill sZurnalas
End Sub

Public Sub Zingsnis(ByVal sTekstas As String)
    Dim nFailas As Integer
    If sZurnalas = "" Then Exit Sub
    nFailas = FreeFile
    Open sZurnalas For Append As #nFailas
    Print #nFailas, Format(Now, "yyyy-mm-dd hh:mm:ss") & "  :  " & sTekstas
    Close #nFailas
End Sub
