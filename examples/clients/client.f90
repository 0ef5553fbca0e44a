! A Fortran client, written from the manual page of the files alone.
!   client plain | catalogue | extended     writes vnxres in that layout, two records
!   client saving | one                     writes vnxsav: two records; record 1 or 2 alone
!   client read LAYOUT                      compares restxt with what the layout holds
! Value (i,j) of variable e in record r is 1E8 * e + 1E4 * i + j + 3000 * r: whole numbers of at most
! ten digits. CELLS cells make the extended part longer than a block.
program client
  use iso_fortran_env, only: int32, real64
  implicit none
  integer, parameter :: cells(3) = [0, 3, 2600]
  character(len=20) :: task, layout_name
  integer :: u, n, layout, compared = 0, wrong = 0
  real(real64), allocatable :: text_value(:)
  integer :: next_value

  call get_command_argument(1, task)
  call get_command_argument(2, layout_name)
  if (task == 'read') then
    layout = layout_of(layout_name)
    call read_text
  else if (task == 'saving' .or. task == 'one') then
    open(newunit=u, file='vnxsav', access='stream', form='unformatted', status='new')
    call write_saving
  else
    layout = layout_of(task)
    open(newunit=u, file='vnxres', access='stream', form='unformatted', status='new')
    call write_results
  end if

contains

  integer function layout_of(name)
    character(len=*), intent(in) :: name
    layout_of = findloc([character(len=20) :: 'plain', 'catalogue', 'extended'], name, 1)
    n = cells(layout_of)
  end function

  subroutine ints(values)
    integer, intent(in) :: values(:)
    write(u) int(values, int32)
  end subroutine

  real(real64) function value(e, i, j, r)
    integer, intent(in) :: e, i, j, r
    value = 1d8 * e + 1d4 * i + j + 3d3 * r
  end function

  ! Writes rows 1 to d1, columns j1 to j2 of a variable; or compares the next values of the text.
  subroutine block(e, d1, j1, j2, r)
    integer, intent(in) :: e, d1, j1, j2, r
    integer :: i, j
    do j = j1, j2
      do i = 1, d1
        if (task == 'read') then
          compared = compared + 1
          if (text_value(next_value) /= value(e, i, j, r)) wrong = wrong + 1
          next_value = next_value + 1
        else
          write(u) value(e, i, j, r)
        end if
      end do
    end do
  end subroutine

  ! CH 7 of n cells, HCS 6 of 2, COL 4, SLVES 2 of 2, TANK 5 of 3, ACCUM 3, no SCH.
  subroutine catalogue_values(r)
    integer, intent(in) :: r
    integer, parameter :: rest(2, 25) = reshape([2, 2, 4, 2,  1, 1, 2, 1, 1, 1, 2, 1, &
      1, 1, 2, 1, 2, 1, 2, 1, 1, 1, 2, 1,  1, 1, 1, 1, 1, 1, 3, 1, 3, 1, 1, 1, 1, 1, 2, 1, &
      1, 1, 1, 1, 1, 1, 1, 1, 1, 1], [2, 25])
    integer :: k
    if (layout == 3) call block(4, 1, 1, 1, r)
    call block(5, n, 1, 1, r)
    call block(6, 2, 1, n, r)
    call block(7, n, 1, 1, r)
    call block(8, 2, 1, n + 1, r)
    call block(9, 2, 1, n, r)
    do k = 1, 25
      call block(9 + k, rest(1, k), 1, rest(2, k), r)
    end do
    call block(35, 1, 1, 1, r)
    call block(36, 1, 1, 1, r)
  end subroutine

  subroutine listed_values(r)
    integer, intent(in) :: r
    call block(1, 1, 1, 1, r)
    call block(2, 3, 1, 1, r)
    call block(3, 2, 1, 2, r)
    call block(3, 2, 3, 4, r)
  end subroutine

  integer function standard_size()
    standard_size = 13
    if (layout == 2) standard_size = 13 + 8 * n + 50
  end function

  subroutine write_results
    character(len=40) :: names(4) = [character(len=40) :: 'A', 'B(1:3)', 'C(1:2,1:2)', 'C(1:2,3:4)']
    integer :: r, h1
    h1 = standard_size()
    if (layout > 1) h1 = -h1
    call ints([h1, 4, 24, 9])
    if (layout > 1) then
      call ints([1, 0, 1, 1, 1, 1, 1, layout - 2])
      call ints([7, n,  6, 2,  4, 1,  -1, -1,  2, 2,  5, 3,  3, 1])
      if (layout == 2) call ints([0, 0])
      if (layout == 3) call ints([(8 * n + 51) / 20000, mod(8 * n + 51, 20000)])
    end if
    call ints([0, 1, 1, 1, 1, 1001,  0, 1, 3, 1, 1, 3003,  0, 1, 2, 1, 2, 2001,  0, 1, 2, 3, 4, 2001])
    write(u) names, 'BY CLIENT'
    do r = 1, 2
      if (layout == 3) call catalogue_values(r)
      write(u) real(r, real64) / 2
      if (layout == 2) call catalogue_values(r)
      call listed_values(r)
    end do
  end subroutine

  subroutine skip_text_group(t)
    integer, intent(in) :: t
    character(len=200) :: line
    line = ''
    do while (line /= '1_TEXT_1')
      read(t, '(a)') line
    end do
  end subroutine

  ! By list-directed input; lines of text and comment lines are passed over.
  subroutine read_text
    integer :: t, r, head(4), counts(8), pairs(14), sizes(2) = 0, descriptors(24)
    real(real64) :: tau
    real(real64), allocatable :: standard(:)
    character(len=80) :: line
    open(newunit=t, file='restxt', status='old')
    read(t, *) head
    if (layout > 1) read(t, *) counts, pairs, sizes
    read(t, *) descriptors
    call skip_text_group(t)
    call skip_text_group(t)
    allocate(text_value(20000 * sizes(1) + sizes(2)), standard(abs(head(1))))
    do r = 1, 2
      if (layout == 3) then
        read(t, *) text_value(:20000)
        read(t, *) text_value(20001:)
        next_value = 1
        call catalogue_values(r)
      end if
      read(t, '(a)') line
      if (line /= '! Tau') wrong = wrong + 1
      read(t, *) standard
      tau = standard(1)
      if (tau /= real(r, real64) / 2) wrong = wrong + 1
      if (allocated(text_value)) deallocate(text_value)
      allocate(text_value, source=standard)
      next_value = 2
      if (layout == 2) call catalogue_values(r)
      call listed_values(r)
      deallocate(text_value)
      allocate(text_value(20000 * sizes(1) + sizes(2)))
    end do
    print '(i0,a,i0,a)', compared, ' values, ', wrong, ' wrong'
  end subroutine

  subroutine write_saving
    write(u) int([1, 9, 3, 2], int32), 'BY CLIENT', int([3, 2, 2, 4, 5, 6, 7, 8, -9], int32)
    if (task == 'saving' .or. layout_name == '1') call empty_record
    if (task == 'saving' .or. layout_name == '2') call full_record
  end subroutine

  subroutine empty_record
    write(u) int([5], int32), 10.5d0, 0.25d0, int([1], int32)
    call ints([1, 1, 0, 1, 1])                           ! R3: no variables, R4 to R6 neither
    call ints([0, 1, 1, 1, 0])                           ! R7, R8
    write(u) ' '                                         ! R9
    call ints([0])                                       ! R10
    write(u) ' '                                         ! R11
    call ints([0, 1, 0, 3, 4, 5, 2, 1, 1, 0, 0, 0, 0, 1]) ! R12 to R20; ls1p + 1 is j30ev
    write(u) 1.5d0, -2.5d-100                            ! R24
    call ints([1, 0, 0])                                 ! R25, R26
    write(u) ' '                                         ! R27
    call ints([5, 1])
  end subroutine

  subroutine full_record
    character(len=20) :: names(2) = [character(len=20) :: 'FIRST', 'SECOND']
    character(len=20) :: events(2) = [character(len=20) :: 'TRIP', 'SCRAM']
    character(len=20) :: list = 'LIST'
    character(len=40) :: text = 'a text of 40'
    write(u) int([6], int32), 20.25d0, 0.125d0, int([2], int32)
    call ints([3, 2, 2, 4, 1,  1, 2,  3, 4,  7])         ! R3
    call ints([5, 6,  7, 8])                             ! R4
    write(u) -1.5d0, 2.5d30, names                       ! R4, R5
    call ints([65, 66, 99])                              ! R6
    call ints([2, 2, 2, 3,  11,  33, 35])                ! R7 to R9
    write(u) 0.75d0, events                              ! R10, R11
    call ints([1, 2,  3, -4, 5,  3, 2, 2,  1, 0, 0])     ! R12 to R16
    write(u) 1234.5d0                                    ! R17
    call ints([12, 13,  1, 3])                           ! R18 to R20
    write(u) list                                        ! R21
    call ints([14, 15,  16])                             ! R22, R23
    write(u) 3.5d0, -4.5d0                               ! R24
    call ints([2, 1,  -17])                              ! R25, R26
    write(u) text                                        ! R27
    call ints([6, 1])
  end subroutine
end program
